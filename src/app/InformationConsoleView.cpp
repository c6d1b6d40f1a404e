#include "InformationConsoleView.h"

#include "screens/common/AppServices.h"
#include "screens/common/Async.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

InformationConsoleView::InformationConsoleView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    //% "Record failures"
    , m_logging(new QCheckBox(qtTrId("info-console-logging-label"), this))
    , m_text(new QPlainTextEdit(this))
    //% "Nothing recorded yet."
    , m_empty(new QLabel(qtTrId("info-console-empty-message"), this))
{
    setObjectName(QStringLiteral("informationConsole"));
    //% "Information console"
    auto* title = new QLabel(qtTrId("info-console-title"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    m_logging->setObjectName(QStringLiteral("consoleLogging"));
    m_logging->setChecked(services.userDefaults().boolValue(ErrorConsoleStore::isEnabledKey));
    m_text->setObjectName(QStringLiteral("consoleText"));
    m_text->setReadOnly(true);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_empty->setObjectName(QStringLiteral("consoleEmpty"));
    m_empty->setEnabled(false);
    //% "Copy"
    auto* copy = new QPushButton(qtTrId("info-console-copy-button"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_logging);
    buttons->addStretch();
    buttons->addWidget(copy);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addLayout(buttons);
    layout->addWidget(m_empty);
    layout->addWidget(m_text, 1);

    connect(m_logging, &QCheckBox::toggled, this, [this](bool enabled) {
        // Switching off keeps what was recorded.
        UserDefaults defaults = m_services.userDefaults();
        defaults.setValue(ErrorConsoleStore::isEnabledKey, enabled);
    });
    connect(copy, &QPushButton::clicked, this, [this] { QGuiApplication::clipboard()->setText(m_errorConsoleText); });
}

void InformationConsoleView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    reload();
}

void InformationConsoleView::reload()
{
    m_isLoadingErrorConsole = true;
    ErrorConsoleStore* console = &m_services.console();
    runAsync(
        this, [console] { return console->consoleText(); },
        [this](const QString& text) {
            m_errorConsoleText = text;
            m_isLoadingErrorConsole = false;
            m_text->setPlainText(text);
            m_text->setVisible(!text.isEmpty());
            m_empty->setVisible(text.isEmpty());
            Q_EMIT reloaded();
        });
}
