#include "tasks/domain/DailyTaskDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace DailyTaskDomain {

TaskResultEntity validateTitle(const DailyTaskEntity& dailyTask)
{
    if (Text::isBlank(dailyTask.dtaTitle))
        return TaskResultEntity::domainFailure(TaskMessages::DailyTask::blankTitle);
    // UTF-8 in the store and JSON on the wire have no form for half a surrogate pair; it would
    // come back as "?".
    return TaskResultEntity::domainCheck(dailyTask.dtaTitle.isValidUtf16(), TaskMessages::DailyTask::unstorableTitle);
}

} // namespace DailyTaskDomain
