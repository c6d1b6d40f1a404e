#pragma once

#include "platform/ResultEntity.h"

// Every rule, repository and use case of the calendar providers module answers with one.
using CalendarProvidersResultEntity = ResultEntity;
