#include "tasks/domain/BitacoraDomain.h"

#include "tasks/domain/TaskMessages.h"

namespace BitacoraDomain {

TaskResultEntity belongsToUser(const BitacoraEntryEntity& entry, const QUuid& userId)
{
    return TaskResultEntity::domainCheck(entry.bteUserId == userId, TaskMessages::Bitacora::notOwned);
}

} // namespace BitacoraDomain
