#include "tasks/domain/DailyTaskDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace DailyTaskDomain {

TaskResultEntity validateTitle(const DailyTaskEntity& dailyTask)
{
    return TaskResultEntity::domainCheck(!Text::isBlank(dailyTask.dtaTitle), TaskMessages::DailyTask::blankTitle);
}

} // namespace DailyTaskDomain
