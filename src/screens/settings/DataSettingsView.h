#pragma once

#include "backup/StoreBackups.h"
#include "platform/Clock.h"
#include "screens/common/AppServices.h"
#include "transfer/TransferControl.h"

#include <QWidget>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QComboBox;
class QDateEdit;

// Settings page for the safety of the user's data: the automatic backups of the local stores
// (listed with their dates and record counts; one restored after a confirmation) and the exports
// and imports of the account's tasks. Every store or backend call runs off the GUI thread; long
// transfers show their progress and can be cancelled.
class DataSettingsView : public QWidget {
    Q_OBJECT

public:
    enum class ExportFormat { json, csv, markdown };

    explicit DataSettingsView(
        const AppServices& services, std::shared_ptr<Clock> clock = nullptr, QWidget* parent = nullptr);

    // The same work the buttons start after asking for a file or folder.
    void backUpNow();
    void exportTo(ExportFormat format, const QString& path);
    void importJson(const QString& path);
    void importCsv(const QString& path);
    // The meets of the calendar store between the two dates (both included) as an .ics file.
    void exportMeets(const QString& path);
    void cancelTransfer();

Q_SIGNALS:
    // The list of backups was read again.
    void backupsListed();
    // A backup, restore, export or import ended; the text is what the page shows.
    void workFinished(bool succeeded, const QString& message);

private:
    void refreshBackups();
    void askToRestore();
    void restore(const QString& name);
    void chooseExport(ExportFormat format);
    void startTransfer(
        std::function<ResultEntity(TransferControl&)> work, std::function<QString(const ResultEntity&)> describe);
    void finish(bool succeeded, const QString& message);
    void setBusy(bool busy);

    AppServices m_services;
    std::shared_ptr<Clock> m_clock;
    QTreeWidget* m_backups;
    QPushButton* m_backUp;
    QPushButton* m_restore;
    QComboBox* m_scope;
    QDateEdit* m_meetsFrom;
    QDateEdit* m_meetsTo;
    QList<QPushButton*> m_transferButtons;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QLabel* m_status;
    std::shared_ptr<TransferControl> m_control;
};
