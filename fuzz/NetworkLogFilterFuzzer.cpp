// The network log's filter runs over every response the backend sends before it is written down.
#include "FuzzInput.h"
#include "networking/NetworkLogger.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    NetworkLogger::filteredResponse(QStringLiteral("200 ") + fuzzText(data, size));
    NetworkLogger::filteredResponse(fuzzText(data, size));
    return 0;
}
