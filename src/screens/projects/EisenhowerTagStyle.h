#pragma once

#include "tasks/entities/EisenhowerTagEnum.h"

#include <QColor>
#include <QIcon>
#include <QString>

#include <optional>

// How a tag looks on screen: its label and a dot of its colour.
namespace EisenhowerTagStyle {

QString label(std::optional<EisenhowerTagEnum> tag);
QColor color(EisenhowerTagEnum tag);
QIcon dot(std::optional<EisenhowerTagEnum> tag);

} // namespace EisenhowerTagStyle
