#pragma once

#include "CommandLine.h"

#include <QObject>
#include <QVariantMap>

// One Tolvane per user session. The first launch owns the session bus name
// "com.quorvel.tolvane" and answers org.freedesktop.Application.Activate on
// "/com/quorvel/tolvane"; a later launch calls that method, so the running window comes to the
// front, and leaves. Two processes would each ring every alarm and write the same stores. What the
// later launch was asked (a day to open, a task to add) travels in the call's platform data.
class SingleInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    static inline const QString serviceName = QStringLiteral("com.quorvel.tolvane");
    static inline const QString objectPath = QStringLiteral("/com/quorvel/tolvane");

    enum class Claim {
        // This process owns the name (or there is no session bus to share): it runs.
        first,
        // Another process owns it and was asked to show its window: this one leaves.
        handedOver,
    };

    explicit SingleInstance(QObject* parent = nullptr);

    Claim claim(const LaunchRequest& request = {});

public Q_SLOTS:
    // The methods of org.freedesktop.Application; the launcher's activation token, if any, lets
    // the window manager give the window the focus.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& actionName, const QVariantList& parameter, const QVariantMap& platformData);

Q_SIGNALS:
    // A later launch asked for the window.
    void activationRequested();
    // A later launch asked for a day or a task; comes after activationRequested.
    void launchRequested(const LaunchRequest& request);
};
