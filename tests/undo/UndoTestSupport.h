#pragma once

#include "screens/common/AppServices.h"
#include "undo/UndoHistory.h"

#include <QSignalSpy>
#include <QTest>

#include <optional>

namespace UndoTestSupport {

template <typename T> std::optional<T> found(const ResultEntity& result)
{
    const T* item = result.result ? result.dataAs<T>() : nullptr;
    return item ? std::optional<T>(*item) : std::nullopt;
}

template <typename T> QList<T> listed(const ResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

// Waits for the change a use case reported to land on the history.
inline bool waitForText(UndoHistory& history, const QString& text)
{
    return QTest::qWaitFor([&] { return history.undoText() == text; }, 15000);
}

// Undoes (or redoes) one step and waits for the outcome; the message, empty on success.
inline QString step(UndoHistory& history, bool backwards)
{
    QSignalSpy finished(&history, &UndoHistory::finished);
    if (backwards)
        history.undo();
    else
        history.redo();
    if (finished.isEmpty() && !finished.wait(30000))
        return QStringLiteral("no outcome");
    return finished.constFirst().at(1).toString();
}

} // namespace UndoTestSupport
