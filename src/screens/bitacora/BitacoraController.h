#pragma once

#include "platform/ResultEntity.h"
#include "tasks/applications/BitacoraApplication.h"
#include "tasks/applications/ProjectsApplication.h"

#include <QObject>
#include <QThreadPool>

#include <functional>

class ErrorConsoleStore;

// What the logbook shows for one day: the user's projects and each one's entry of that day.
struct BitacoraDayEntity {
    QList<ProjectEntity> projects;
    QHash<QUuid, BitacoraEntryEntity> entries;
};

// The logbook's actions over the Tasks module. They run one after another on a worker thread of
// their own: a day is loaded only after every save queued before it, so the screen never shows
// text older than what it wrote, and two saves of one new entry cannot both create it. Each
// answer reaches done on context's thread; a failure also goes to the information console as
// "BitacoraController.<action> failed: ...".
class BitacoraController final : public QObject {
    Q_OBJECT

public:
    BitacoraController(ProjectsApplication projectsApplication, BitacoraApplication bitacoraApplication, QUuid userId,
        ErrorConsoleStore& console, QObject* parent = nullptr);
    ~BitacoraController() override;

    // data: BitacoraDayEntity.
    void load(const QDateTime& date, QObject* context, std::function<void(const ResultEntity&)> done);
    // Stores text as the project's entry of date's day. data: the stored BitacoraEntryEntity.
    void save(const QUuid& projectId, const QDateTime& date, const QString& text, QObject* context,
        std::function<void(const ResultEntity&)> done);
    void delete_(const QUuid& entryId, QObject* context, std::function<void(const ResultEntity&)> done);

    // For the last moments of the screen, when no event loop will deliver an answer: waits for
    // the queued work, then saves on the calling thread.
    ResultEntity saveNow(const QUuid& projectId, const QDateTime& date, const QString& text);

    const ProjectsApplication projectsApplication;
    const BitacoraApplication bitacoraApplication;
    const QUuid userId;

private:
    template <typename Work>
    void run(const QString& action, QObject* context, Work&& work, std::function<void(const ResultEntity&)> done);

    ErrorConsoleStore& m_console;
    QThreadPool m_queue;
};
