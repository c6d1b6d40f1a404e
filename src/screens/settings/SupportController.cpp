#include "screens/settings/SupportController.h"

#include "screens/common/ActionRunner.h"

SupportController::SupportController(SupportApplication application, ErrorConsoleStore& console)
    : application(std::move(application))
    , m_console(console)
{
}

void SupportController::sendMessage(QObject* receiver, const QString& message, std::function<void(bool)> done) const
{
    runAction(
        receiver, m_console, sendAction,
        [support = application, message]() -> LoginResultEntity {
            if (!support.repository)
                return LoginResultEntity::infrastructureFailure(QStringLiteral("No backend is configured"));
            return support.sendSupportMessage(message);
        },
        [done = std::move(done)](const ResultEntity& result) { done(result.result); });
}
