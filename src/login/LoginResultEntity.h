#pragma once

#include "platform/ResultEntity.h"

// Every operation of the Login module answers with one; none throws.
using LoginResultEntity = ResultEntity;
