#pragma once

#include "platform/ResultEntity.h"
#include "screens/common/Async.h"
#include "screens/common/ErrorConsoleStore.h"

#include <QObject>
#include <QString>

#include <functional>

// How a screen runs one of its actions: the use case off the GUI thread, then, on the GUI
// thread, done with the result. A failure also goes to the information console as
// "<action> failed: <first message>".
template <typename Work>
void runAction(QObject* receiver, ErrorConsoleStore& console, const QString& action, Work&& work,
    std::function<void(const ResultEntity&)> done)
{
    runAsync(
        receiver, std::forward<Work>(work), [&console, action, done = std::move(done)](const ResultEntity& result) {
            if (!result.result)
                console.appendLine(action + QStringLiteral(" failed: ") + result.firstMessage().value_or(QString()));
            done(result);
        });
}
