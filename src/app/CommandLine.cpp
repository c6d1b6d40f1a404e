#include "CommandLine.h"

namespace {

const QString dateKey = QStringLiteral("tolvane-date");
const QString quickAddKey = QStringLiteral("tolvane-quick-add");

QCommandLineOption dateOption()
{
    //% "Open the schedule on this day (YYYY-MM-DD)."
    return {QStringLiteral("date"), qtTrId("app-option-date"), QStringLiteral("YYYY-MM-DD")};
}

QCommandLineOption quickAddOption()
{
    //% "Add a task typed in one line, such as \"Pay rent tomorrow #Home\"."
    return {QStringLiteral("quick-add"), qtTrId("app-option-quick-add"), QStringLiteral("text")};
}

QCommandLineOption backgroundOption()
{
    //% "Start without a window, in the system tray, so that alarms ring."
    return {QStringLiteral("background"), qtTrId("app-option-background")};
}

} // namespace

QVariantMap LaunchRequest::toPlatformData() const
{
    QVariantMap data;
    if (date)
        data.insert(dateKey, date->toString(Qt::ISODate));
    if (quickAddText)
        data.insert(quickAddKey, *quickAddText);
    return data;
}

LaunchRequest LaunchRequest::fromPlatformData(const QVariantMap& data)
{
    LaunchRequest request;
    // What comes over the bus is checked like a command line: another program could send it.
    const QDate date = QDate::fromString(data.value(dateKey).toString(), Qt::ISODate);
    if (date.isValid())
        request.date = date;
    const QString text = data.value(quickAddKey).toString().trimmed();
    if (!text.isEmpty())
        request.quickAddText = text;
    return request;
}

namespace CommandLine {

void addOptions(QCommandLineParser& parser)
{
    //% "Plan your day: schedule, projects and a daily logbook."
    parser.setApplicationDescription(qtTrId("app-command-line-description"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(dateOption());
    parser.addOption(quickAddOption());
    parser.addOption(backgroundOption());
}

Parsed parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    Parsed parsed;
    if (!parser.parse(arguments)) {
        parsed.error = parser.errorText();
        return parsed;
    }
    parsed.helpAsked = parser.isSet(QStringLiteral("help"));
    parsed.versionAsked = parser.isSet(QStringLiteral("version"));
    if (!parser.positionalArguments().isEmpty()) {
        //% "Unexpected argument: %1"
        parsed.error = qtTrId("app-option-unexpected-argument").arg(parser.positionalArguments().constFirst());
        return parsed;
    }
    if (parser.isSet(QStringLiteral("date"))) {
        const QString text = parser.value(QStringLiteral("date"));
        // Only the strict form: "2026-1-5" or "05/01/2026" would be read differently by others.
        const QDate date = QDate::fromString(text, QStringLiteral("yyyy-MM-dd"));
        if (text.size() != 10 || !date.isValid()) {
            //% "Not a day: “%1”. Write it as YYYY-MM-DD, for example 2026-12-01."
            parsed.error = qtTrId("app-option-bad-date").arg(text);
            return parsed;
        }
        parsed.request.date = date;
    }
    if (parser.isSet(QStringLiteral("quick-add"))) {
        const QString text = parser.value(QStringLiteral("quick-add")).trimmed();
        if (text.isEmpty()) {
            //% "--quick-add needs the text of the task."
            parsed.error = qtTrId("app-option-empty-quick-add");
            return parsed;
        }
        parsed.request.quickAddText = text;
    }
    parsed.request.background = parser.isSet(QStringLiteral("background"));
    return parsed;
}

} // namespace CommandLine
