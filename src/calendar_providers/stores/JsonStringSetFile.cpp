#include "calendar_providers/stores/JsonStringSetFile.h"

#include "platform/Logging.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>

namespace JsonStringSetFile {

QSet<QString> load(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isArray())
        return {};
    QSet<QString> members;
    for (const QJsonValue& value : document.array()) {
        // One stray value means the file is not ours to interpret; trusting the rest could
        // hide calendars the user never chose to hide.
        if (!value.isString())
            return {};
        members.insert(value.toString());
    }
    return members;
}

bool save(const QString& path, const QSet<QString>& members)
{
    // Sorted so that saving the same set twice writes the same bytes.
    QStringList sorted(members.begin(), members.end());
    std::sort(sorted.begin(), sorted.end());
    const QByteArray json = QJsonDocument(QJsonArray::fromStringList(sorted)).toJson(QJsonDocument::Compact);

    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.commit()) {
        qCWarning(lcCalendar) << "could not save" << path << ":" << file.errorString();
        return false;
    }
    return true;
}

AccountProviderSet loadKinds(const QString& path)
{
    AccountProviderSet kinds;
    for (const QString& raw : load(path)) {
        if (const std::optional<AccountProviderEnum> kind = AccountProvider::fromRawValue(raw))
            kinds.insert(*kind);
    }
    return kinds;
}

bool saveKinds(const QString& path, const AccountProviderSet& kinds)
{
    QSet<QString> raws;
    for (AccountProviderEnum kind : kinds)
        raws.insert(AccountProvider::rawValue(kind));
    return save(path, raws);
}

} // namespace JsonStringSetFile
