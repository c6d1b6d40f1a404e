#pragma once

#include "tasks/entities/BitacoraEntryEntity.h"
#include "tasks/entities/TaskResultEntity.h"

// The rule on bitácora entries; a failure carries its text as domainMessage. An entry's content
// may be blank: clearing the text is how a user empties a day.
namespace BitacoraDomain {

TaskResultEntity belongsToUser(const BitacoraEntryEntity& entry, const QUuid& userId);

} // namespace BitacoraDomain
