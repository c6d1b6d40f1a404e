#pragma once

#include <QCommandLineParser>
#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

// What a launch asks of Tolvane beyond starting: a day to open, a task to add, staying in the
// tray. The same request travels from a second launch to the running one, so it converts to and
// from the map that goes over the session bus.
struct LaunchRequest {
    std::optional<QDate> date;
    std::optional<QString> quickAddText;
    bool background = false;

    bool asksForAnything() const { return date || quickAddText; }
    QVariantMap toPlatformData() const;
    static LaunchRequest fromPlatformData(const QVariantMap& data);

    friend bool operator==(const LaunchRequest&, const LaunchRequest&) = default;
};

namespace CommandLine {

// The options of the program, --help and --version included.
void addOptions(QCommandLineParser& parser);

struct Parsed {
    LaunchRequest request;
    // Empty when the arguments are fine; else what is wrong, for the terminal.
    QString error;
    bool helpAsked = false;
    bool versionAsked = false;
};

// Reads arguments (the program name first). Qt's own window-system options must already have
// been taken out by QApplication, or be absent.
Parsed parse(const QStringList& arguments);

// The exit status of a launch whose arguments are wrong.
constexpr int badArgumentsStatus = 2;

} // namespace CommandLine
