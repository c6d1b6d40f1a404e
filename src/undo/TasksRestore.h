#pragma once

#include "tasks/TasksApplicationFactory.h"
#include "tasks/applications/TaskChangeRecorder.h"

#include <QString>

// Puts the Tasks stores back the way a change found them (or forward the way it left them),
// through the same use cases the screens call, so that validation and both kinds of account
// apply alike.
namespace TasksRestore {

enum class OutcomeEnum { done, changedElsewhere, failed };

struct Outcome {
    OutcomeEnum outcome = OutcomeEnum::done;
    // Why it failed, for the console.
    QString message;
};

// Checks first that every entity of the change is still as `expected` has it (present and equal,
// or absent); when one is not, changes nothing and answers changedElsewhere. Then creates,
// rewrites and deletes until the stores hold `target`: parents are created before their children
// and deleted after them. Blocking.
Outcome apply(
    const TasksApplicationFactory::Applications& applications, const TasksState& expected, const TasksState& target);

} // namespace TasksRestore
