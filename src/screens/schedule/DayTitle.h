#pragma once

#include <QDate>
#include <QString>

// The heading of a day, written the same way in the schedule and the logbook: the locale's long
// date ("Saturday, 21 November 2026", "Sábado, 21 de noviembre de 2026"), starting with a capital.
namespace DayTitle {
QString of(const QDate& date);
}
