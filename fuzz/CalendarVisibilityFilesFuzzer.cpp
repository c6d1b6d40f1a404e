// The calendar stores' small JSON files live in the user's folder, where anything can change them.
#include "FuzzInput.h"
#include "calendar_providers/stores/JsonStringSetFile.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("visibility.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        abort();
    file.write(reinterpret_cast<const char*>(data), qint64(size));
    file.close();
    JsonStringSetFile::load(path);
    JsonStringSetFile::loadKinds(path);
    return 0;
}
