#include "screens/settings/DataSettingsView.h"

#include "backup/LocalStoreBackups.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "platform/SystemClock.h"
#include "screens/common/Async.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/settings/AccountMoveView.h"
#include "screens/settings/CsvMappingDialog.h"
#include "transfer/BitacoraMarkdownExport.h"
#include "transfer/CsvTable.h"
#include "transfer/CsvTaskImport.h"
#include "transfer/MeetsIcsExport.h"
#include "transfer/TasksCsvExport.h"
#include "transfer/TasksImporter.h"
#include "transfer/TasksJsonFormat.h"
#include "transfer/TasksSnapshotReader.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

// Daily tasks are kept per day; exports take these days around today.
constexpr int dailyTaskYearsBack = 2;
constexpr int dailyTaskYearsAhead = 1;

struct Account {
    QUuid userId;
    TasksRepositories repositories;
};

// The signed-in user's repositories, or why there are none. Blocking.
std::variant<Account, QString> accountOf(const AppServices& services)
{
    const AppServices::TasksSession session = services.tasksSession();
    const auto* applications = session.applications.dataAs<TasksApplicationFactory::Applications>();
    if (!session.user || !applications)
        return session.applications.firstMessage().value_or(QString());
    return Account {QUuid::fromString(session.user->usrId),
        {applications->projects.projectRepository, applications->taskLists.taskListRepository,
            applications->tasks.taskRepository, applications->dailyTasks.dailyTaskRepository,
            applications->bitacora.bitacoraRepository}};
}

QString reasonText(const QString& reason)
{
    if (reason == StoreBackups::beforeRestoreReason) {
        //% "Before a restore"
        return qtTrId("data-settings-backup-reason-restore");
    }
    if (reason == StoreBackups::beforeMigrationReason) {
        //% "Before an update"
        return qtTrId("data-settings-backup-reason-migration");
    }
    //% "Daily"
    return qtTrId("data-settings-backup-reason-daily");
}

ResultEntity writeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        return ResultEntity::infrastructureFailure(file.errorString());
    return ResultEntity::success();
}

} // namespace

DataSettingsView::DataSettingsView(const AppServices& services, std::shared_ptr<Clock> clock, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_clock(clock ? std::move(clock) : std::make_shared<SystemClock>())
{
    setObjectName(QStringLiteral("dataSettingsView"));

    //% "Backups"
    auto* backupsBox = new QGroupBox(qtTrId("data-settings-backups-title"), this);
    //% "Tolvane keeps an encrypted copy of its local data every day: the last 7 days and 4 weeks."
    auto* backupsHint = new QLabel(qtTrId("data-settings-backups-hint"), backupsBox);
    backupsHint->setWordWrap(true);
    m_backups = new QTreeWidget(backupsBox);
    m_backups->setObjectName(QStringLiteral("backupsList"));
    m_backups->setRootIsDecorated(false);
    m_backups->setHeaderLabels({
        //% "Date"
        qtTrId("data-settings-backup-date"),
        //% "Kind"
        qtTrId("data-settings-backup-kind"),
        //% "Items"
        qtTrId("data-settings-backup-items"),
    });
    m_backups->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    //% "Back up now"
    m_backUp = new QPushButton(qtTrId("data-settings-backup-now"), backupsBox);
    m_backUp->setObjectName(QStringLiteral("backUpNow"));
    //% "Restore…"
    m_restore = new QPushButton(qtTrId("data-settings-restore"), backupsBox);
    m_restore->setObjectName(QStringLiteral("restoreBackup"));
    m_restore->setEnabled(false);
    auto* backupButtons = new QHBoxLayout;
    backupButtons->addStretch();
    backupButtons->addWidget(m_backUp);
    backupButtons->addWidget(m_restore);
    auto* backupsLayout = new QVBoxLayout(backupsBox);
    backupsLayout->addWidget(backupsHint);
    backupsLayout->addWidget(m_backups, 1);
    backupsLayout->addLayout(backupButtons);

    //% "Export and import"
    auto* transferBox = new QGroupBox(qtTrId("data-settings-transfer-title"), this);
    m_scope = new QComboBox(transferBox);
    m_scope->setObjectName(QStringLiteral("exportScope"));
    //% "Everything"
    m_scope->addItem(qtTrId("data-settings-scope-everything"));
    auto button = [&](const char* id, const QString& text) {
        auto* made = new QPushButton(text, transferBox);
        made->setObjectName(QString::fromLatin1(id));
        m_transferButtons.append(made);
        return made;
    };
    //% "Tasks to JSON…"
    QPushButton* toJson = button("exportJson", qtTrId("data-settings-export-json"));
    //% "Tasks to CSV…"
    QPushButton* toCsv = button("exportCsv", qtTrId("data-settings-export-csv"));
    //% "Logbook to Markdown…"
    QPushButton* toMarkdown = button("exportMarkdown", qtTrId("data-settings-export-markdown"));
    //% "Import JSON…"
    QPushButton* fromJson = button("importJson", qtTrId("data-settings-import-json"));
    //% "Import tasks from CSV…"
    QPushButton* fromCsv = button("importCsv", qtTrId("data-settings-import-csv"));
    //% "Meets to .ics…"
    QPushButton* toIcs = button("exportIcs", qtTrId("data-settings-export-ics"));
    const QDate today = m_clock->now().toLocalTime().date();
    m_meetsFrom = new QDateEdit(today.addDays(-30), transferBox);
    m_meetsFrom->setObjectName(QStringLiteral("meetsFrom"));
    m_meetsFrom->setCalendarPopup(true);
    m_meetsTo = new QDateEdit(today.addDays(90), transferBox);
    m_meetsTo->setObjectName(QStringLiteral("meetsTo"));
    m_meetsTo->setCalendarPopup(true);
    m_progress = new QProgressBar(transferBox);
    m_progress->setObjectName(QStringLiteral("transferProgress"));
    m_progress->setVisible(false);
    //% "Cancel"
    m_cancel = new QPushButton(qtTrId("data-settings-cancel"), transferBox);
    m_cancel->setObjectName(QStringLiteral("cancelTransfer"));
    m_cancel->setVisible(false);
    auto* scopeRow = new QHBoxLayout;
    //% "Export"
    scopeRow->addWidget(new QLabel(qtTrId("data-settings-export-label"), transferBox));
    scopeRow->addWidget(m_scope, 1);
    auto* exportRow = new QHBoxLayout;
    exportRow->addWidget(toJson);
    exportRow->addWidget(toCsv);
    exportRow->addWidget(toMarkdown);
    auto* meetsRow = new QHBoxLayout;
    //% "Meets from"
    meetsRow->addWidget(new QLabel(qtTrId("data-settings-meets-from"), transferBox));
    meetsRow->addWidget(m_meetsFrom);
    //% "to"
    meetsRow->addWidget(new QLabel(qtTrId("data-settings-meets-to"), transferBox));
    meetsRow->addWidget(m_meetsTo);
    meetsRow->addWidget(toIcs);
    meetsRow->addStretch();
    auto* importRow = new QHBoxLayout;
    importRow->addWidget(fromJson);
    importRow->addWidget(fromCsv);
    importRow->addStretch();
    auto* progressRow = new QHBoxLayout;
    progressRow->addWidget(m_progress, 1);
    progressRow->addWidget(m_cancel);
    auto* transferLayout = new QVBoxLayout(transferBox);
    transferLayout->addLayout(scopeRow);
    transferLayout->addLayout(exportRow);
    transferLayout->addLayout(meetsRow);
    transferLayout->addLayout(importRow);
    transferLayout->addLayout(progressRow);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("dataStatus"));
    m_status->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(backupsBox, 1);
    layout->addWidget(transferBox);
    layout->addWidget(new AccountMoveView(m_services, this));
    layout->addWidget(m_status);

    connect(m_backups, &QTreeWidget::itemSelectionChanged, this,
        [this] { m_restore->setEnabled(!m_backups->selectedItems().isEmpty() && m_backUp->isEnabled()); });
    connect(m_backUp, &QPushButton::clicked, this, &DataSettingsView::backUpNow);
    connect(m_restore, &QPushButton::clicked, this, &DataSettingsView::askToRestore);
    connect(m_cancel, &QPushButton::clicked, this, &DataSettingsView::cancelTransfer);
    connect(toJson, &QPushButton::clicked, this, [this] { chooseExport(ExportFormat::json); });
    connect(toCsv, &QPushButton::clicked, this, [this] { chooseExport(ExportFormat::csv); });
    connect(toMarkdown, &QPushButton::clicked, this, [this] { chooseExport(ExportFormat::markdown); });
    connect(toIcs, &QPushButton::clicked, this, [this] {
        //% "Export meets"
        const QString path = QFileDialog::getSaveFileName(this, qtTrId("data-settings-export-ics-dialog"),
            QDir::home().filePath(QStringLiteral("tolvane-meets.ics")), QStringLiteral("iCalendar (*.ics)"));
        if (!path.isEmpty())
            exportMeets(path);
    });
    connect(fromJson, &QPushButton::clicked, this, [this] {
        //% "Import tasks"
        const QString path = QFileDialog::getOpenFileName(
            this, qtTrId("data-settings-import-json-dialog"), QDir::homePath(), QStringLiteral("JSON (*.json)"));
        if (!path.isEmpty())
            importJson(path);
    });
    connect(fromCsv, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getOpenFileName(
            this, qtTrId("data-settings-import-csv"), QDir::homePath(), QStringLiteral("CSV (*.csv *.txt)"));
        if (!path.isEmpty())
            importCsv(path);
    });

    refreshBackups();
    runAsync(
        this,
        [services = m_services]() -> QList<ProjectEntity> {
            const auto account = accountOf(services);
            if (const Account* found = std::get_if<Account>(&account)) {
                const ResultEntity listed = found->repositories.projects->list(found->userId);
                if (const auto* projects = listed.dataAs<QList<ProjectEntity>>())
                    return *projects;
            }
            return {};
        },
        [this](const QList<ProjectEntity>& projects) {
            for (const ProjectEntity& project : projects)
                m_scope->addItem(project.prjName, project.prjId);
        });
}

void DataSettingsView::refreshBackups()
{
    runAsync(
        this,
        [services = m_services, clock = m_clock] {
            const std::optional<StoreBackups> backups
                = LocalStoreBackups::make(services.storeConfigurations(), services.storeDefaults(), clock);
            return backups ? backups->list() : QList<StoreBackupEntity>();
        },
        [this](const QList<StoreBackupEntity>& listed) {
            m_backups->clear();
            for (const StoreBackupEntity& backup : listed) {
                auto* item = new QTreeWidgetItem(m_backups,
                    {QLocale().toString(backup.createdAt.toLocalTime(), QLocale::ShortFormat),
                        reasonText(backup.reason), QLocale().toString(backup.totalCount())});
                item->setData(0, Qt::UserRole, backup.name);
                item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
            }
            Q_EMIT backupsListed();
        });
}

void DataSettingsView::backUpNow()
{
    setBusy(true);
    runAsync(
        this,
        [services = m_services, clock = m_clock] {
            std::optional<StoreBackups> backups
                = LocalStoreBackups::make(services.storeConfigurations(), services.storeDefaults(), clock);
            //% "The keyring could not be read; no backup was made."
            return backups ? backups->backUp(StoreBackups::dailyReason)
                           : ResultEntity::infrastructureFailure(qtTrId("data-settings-backup-no-keys"));
        },
        [this](const ResultEntity& made) {
            setBusy(false);
            refreshBackups();
            //% "Backed up."
            finish(made.result, made.result ? qtTrId("data-settings-backup-done") : *made.firstMessage());
        });
}

void DataSettingsView::askToRestore()
{
    const QList<QTreeWidgetItem*> selected = m_backups->selectedItems();
    if (selected.isEmpty())
        return;
    const QString name = selected.constFirst()->data(0, Qt::UserRole).toString();
    auto* question = new QMessageBox(QMessageBox::Warning,
        //% "Restore this backup?"
        qtTrId("data-settings-restore-question"),
        // clang-format off
        //% "Your local data goes back to how it was on %1. The current data is backed up first, so this can be undone by restoring that backup."
        qtTrId("data-settings-restore-explanation").arg(selected.constFirst()->text(0)),
        // clang-format on
        QMessageBox::Cancel, this);
    question->setObjectName(QStringLiteral("restoreConfirmation"));
    //% "Restore"
    QPushButton* confirm = question->addButton(qtTrId("data-settings-restore-confirm"), QMessageBox::AcceptRole);
    confirm->setObjectName(QStringLiteral("confirmRestore"));
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QMessageBox::buttonClicked, this, [this, name, confirm](QAbstractButton* clicked) {
        if (clicked == confirm)
            restore(name);
    });
    question->open();
}

void DataSettingsView::restore(const QString& name)
{
    setBusy(true);
    runAsync(
        this,
        [services = m_services, clock = m_clock, name] {
            std::optional<StoreBackups> backups
                = LocalStoreBackups::make(services.storeConfigurations(), services.storeDefaults(), clock);
            return backups ? backups->restore(name)
                           : ResultEntity::infrastructureFailure(qtTrId("data-settings-backup-no-keys"));
        },
        [this](const ResultEntity& restored) {
            setBusy(false);
            refreshBackups();
            //% "Restored. The data from before is kept as a backup of its own."
            finish(restored.result, restored.result ? qtTrId("data-settings-restore-done") : *restored.firstMessage());
        });
}

void DataSettingsView::chooseExport(ExportFormat format)
{
    QString path;
    if (format == ExportFormat::markdown) {
        //% "Choose a folder for the logbook"
        path
            = QFileDialog::getExistingDirectory(this, qtTrId("data-settings-export-markdown-dialog"), QDir::homePath());
    } else {
        const bool json = format == ExportFormat::json;
        //% "Export tasks"
        path = QFileDialog::getSaveFileName(this, qtTrId("data-settings-export-dialog"),
            QDir::home().filePath(json ? QStringLiteral("tolvane-tasks.json") : QStringLiteral("tolvane-tasks.csv")),
            json ? QStringLiteral("JSON (*.json)") : QStringLiteral("CSV (*.csv)"));
    }
    if (!path.isEmpty())
        exportTo(format, path);
}

void DataSettingsView::exportTo(ExportFormat format, const QString& path)
{
    const std::optional<QUuid> project
        = m_scope->currentData().isValid() ? std::optional(m_scope->currentData().toUuid()) : std::nullopt;
    const QDate today = m_clock->now().toLocalTime().date();
    startTransfer(
        [services = m_services, format, path, project, today](TransferControl& control) -> ResultEntity {
            const auto account = accountOf(services);
            if (const QString* why = std::get_if<QString>(&account))
                return ResultEntity::infrastructureFailure(*why);
            const Account& found = std::get<Account>(account);
            const ResultEntity read = TasksSnapshotReader(found.repositories)
                                          .read({found.userId, project, today.addYears(-dailyTaskYearsBack),
                                                    today.addYears(dailyTaskYearsAhead)},
                                              control);
            if (!read.result)
                return read;
            const TasksSnapshot& snapshot = *read.dataAs<TasksSnapshot>();
            if (format == ExportFormat::json)
                return writeFile(path, TasksJsonFormat::write(snapshot));
            if (format == ExportFormat::csv)
                return writeFile(path, TasksCsvExport::write(snapshot).toUtf8());
            const QMap<QString, QString> files = BitacoraMarkdownExport::files(snapshot);
            for (auto it = files.cbegin(); it != files.cend(); ++it) {
                if (const ResultEntity written = writeFile(QDir(path).filePath(it.key()), it.value().toUtf8());
                    !written.result)
                    return written;
            }
            return ResultEntity::success();
        },
        //% "Exported."
        [](const ResultEntity&) { return qtTrId("data-settings-export-done"); });
}

void DataSettingsView::exportMeets(const QString& path)
{
    // The desktop's calendar store is first reached from the GUI thread.
    std::shared_ptr<LiveEventKitStore> store = LiveEventKitStore::shared();
    const QDate from = std::min(m_meetsFrom->date(), m_meetsTo->date());
    const QDate to = std::max(m_meetsFrom->date(), m_meetsTo->date());
    setBusy(true);
    // The schedule's own reading, so that a Google account's backend events leave with the
    // calendar store's.
    runAsync(
        this, [services = m_services] { return services.tasksSession().user; },
        [this, store, from, to, path](const std::optional<UserEntity>& user) {
            const QTimeZone zone = QTimeZone::systemTimeZone();
            auto meets = std::make_shared<const DailyEventsController>(m_services, user, store, zone);
            startTransfer(
                [meets, zone, from, to, path](TransferControl&) -> ResultEntity {
                    try {
                        return writeFile(path, MeetsIcsExport::write(meets->meetsBetween(from, to), zone));
                    } catch (const std::exception& error) {
                        return ResultEntity::infrastructureFailure(QString::fromUtf8(error.what()));
                    }
                },
                [](const ResultEntity&) { return qtTrId("data-settings-export-done"); });
        });
}

void DataSettingsView::importJson(const QString& path)
{
    startTransfer(
        [services = m_services, path](TransferControl& control) -> ResultEntity {
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly))
                return ResultEntity::infrastructureFailure(file.errorString());
            QString error;
            const std::optional<TasksSnapshot> snapshot = TasksJsonFormat::read(file.readAll(), &error);
            if (!snapshot)
                return ResultEntity::applicationFailure(error);
            const auto account = accountOf(services);
            if (const QString* why = std::get_if<QString>(&account))
                return ResultEntity::infrastructureFailure(*why);
            const Account& found = std::get<Account>(account);
            return TasksImporter(found.repositories, found.userId).import(*snapshot, control);
        },
        [](const ResultEntity& done) {
            const auto outcome = *done.dataAs<TasksImporter::Outcome>();
            //% "Imported %1 items; %2 were already there and were skipped."
            return qtTrId("data-settings-import-done").arg(outcome.created).arg(outcome.skipped);
        });
}

void DataSettingsView::importCsv(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        finish(false, file.errorString());
        return;
    }
    const QList<QStringList> table = CsvTable::parse(QString::fromUtf8(file.readAll()));
    if (table.isEmpty()) {
        //% "The file holds no rows."
        finish(false, qtTrId("data-settings-csv-empty"));
        return;
    }
    setBusy(true);
    runAsync(
        this,
        [services = m_services] {
            QList<CsvMappingDialog::Target> targets;
            const auto account = accountOf(services);
            if (const Account* found = std::get_if<Account>(&account)) {
                const ResultEntity projects = found->repositories.projects->list(found->userId);
                for (const ProjectEntity& project :
                    projects.result ? *projects.dataAs<QList<ProjectEntity>>() : QList<ProjectEntity>()) {
                    const ResultEntity lists = found->repositories.taskLists->list(project.prjId);
                    for (const TaskListEntity& list :
                        lists.result ? *lists.dataAs<QList<TaskListEntity>>() : QList<TaskListEntity>())
                        targets.append({project.prjName + QStringLiteral(" — ") + list.talName, list});
                }
            }
            return targets;
        },
        [this, table](const QList<CsvMappingDialog::Target>& targets) {
            setBusy(false);
            auto* dialog = new CsvMappingDialog(table.constFirst(), targets, this);
            dialog->setAttribute(Qt::WA_DeleteOnClose);
            connect(dialog, &QDialog::accepted, this, [this, dialog, table] {
                const CsvTaskImport::Mapping mapping = dialog->mapping();
                const TaskListEntity target = dialog->target();
                startTransfer(
                    [services = m_services, rows = table.mid(1), mapping, target](TransferControl& control) {
                        const auto account = accountOf(services);
                        if (const QString* why = std::get_if<QString>(&account))
                            return ResultEntity::infrastructureFailure(*why);
                        return CsvTaskImport(std::get<Account>(account).repositories.tasks, target)
                            .import(rows, mapping, control);
                    },
                    [](const ResultEntity& done) {
                        const auto outcome = *done.dataAs<CsvTaskImport::Outcome>();
                        //% "Imported %1 tasks; %2 rows without a title were left out."
                        return qtTrId("data-settings-csv-import-done").arg(outcome.created).arg(outcome.skipped);
                    });
            });
            dialog->open();
        });
}

void DataSettingsView::cancelTransfer()
{
    if (m_control)
        m_control->cancel();
}

void DataSettingsView::startTransfer(
    std::function<ResultEntity(TransferControl&)> work, std::function<QString(const ResultEntity&)> describe)
{
    QPointer<QProgressBar> progress = m_progress;
    m_control = std::make_shared<TransferControl>([progress](qint64 done, qint64 total) {
        QMetaObject::invokeMethod(progress, [progress, done, total] {
            if (!progress)
                return;
            progress->setMaximum(int(std::min<qint64>(total, INT_MAX)));
            progress->setValue(int(std::min<qint64>(done, INT_MAX)));
        });
    });
    m_progress->setRange(0, 0);
    m_progress->setVisible(true);
    m_cancel->setVisible(true);
    setBusy(true);
    runAsync(
        this, [work = std::move(work), control = m_control] { return work(*control); },
        [this, describe = std::move(describe)](const ResultEntity& result) {
            m_progress->setVisible(false);
            m_cancel->setVisible(false);
            m_control.reset();
            setBusy(false);
            if (result.result) {
                finish(true, describe(result));
            } else if (result.applicationMessage == TasksImporter::cancelledMessage) {
                //% "Cancelled. What was already imported stays; importing the same file again adds the rest."
                finish(false, qtTrId("data-settings-transfer-cancelled"));
            } else {
                finish(false, result.firstMessage().value_or(QString()));
            }
        });
}

void DataSettingsView::finish(bool succeeded, const QString& message)
{
    m_status->setText(message);
    Q_EMIT workFinished(succeeded, message);
}

void DataSettingsView::setBusy(bool busy)
{
    m_backUp->setEnabled(!busy);
    m_restore->setEnabled(!busy && !m_backups->selectedItems().isEmpty());
    for (QPushButton* button : std::as_const(m_transferButtons))
        button->setEnabled(!busy);
}
