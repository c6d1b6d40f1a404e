#pragma once

#include "platform/ResultEntity.h"

// Every rule, repository, database opening and use case of the Tasks module answers with one.
using TaskResultEntity = ResultEntity;
