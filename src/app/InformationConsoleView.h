#pragma once

#include <QWidget>

class AppServices;
class QCheckBox;
class QLabel;
class QPlainTextEdit;

// The information console: a switch that turns recording on or off, and the recorded lines,
// built off the GUI thread each time the view is shown.
class InformationConsoleView final : public QWidget {
    Q_OBJECT

public:
    explicit InformationConsoleView(const AppServices& services, QWidget* parent = nullptr);

    bool isLoadingErrorConsole() const { return m_isLoadingErrorConsole; }
    QString errorConsoleText() const { return m_errorConsoleText; }
    void reload();

Q_SIGNALS:
    void reloaded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    const AppServices& m_services;
    bool m_isLoadingErrorConsole = false;
    QString m_errorConsoleText;
    QCheckBox* m_logging;
    QPlainTextEdit* m_text;
    QLabel* m_empty;
};
