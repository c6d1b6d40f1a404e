#pragma once

#include "tasks/entities/EisenhowerTagEnum.h"
#include "tasks/entities/TaskRecurrenceEntity.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

struct TaskEntity;

// Reads a task typed in one line ("Pay rent tomorrow at 9 #Home !1") into its fields, in English
// and Spanish. Only whole phrases are recognised ("may" or "el" alone never are); the words that
// are not part of one make the title. Every recognised phrase comes back with its place in the
// text, so that a screen can show it and let the user take it back.
//
// How days are read, relative to the reference day:
// - a weekday ("on Monday", "next Monday", "el lunes", "el próximo lunes") is the first such day
//   after today: on a Monday, "el lunes" is a week away (today is "today"/"hoy");
// - a day of the month ("on the 15th", "el día 15") is this month's when it is today or later,
//   else the next month that has that day;
// - "15/12" (day/month) is this year's when it is today or later, else next year's;
// - an hour from 1 to 6 without am/pm ("at 3", "a las 5") is in the afternoon; 7 to 12 and
//   anything with minutes written as 13:00 or more is taken as written;
// - a time without a day is today's, or tomorrow's once it has passed;
// - a rule without a day starts on its first occurrence from today on.
// When a field is named twice, the first phrase sets it and the second stays in the title.
namespace QuickAddParser {

enum class PhraseKindEnum { date, time, recurrence, project, list, quadrant, reminder };

struct Phrase {
    PhraseKindEnum kind = PhraseKindEnum::date;
    // Where it is in the text, in UTF-16 code units, and the text as typed.
    int start = 0;
    int length = 0;
    QString text;

    friend bool operator==(const Phrase&, const Phrase&) = default;
};

// A project and its lists, by name, for #Project and /List.
struct ProjectNames {
    QString name;
    QStringList lists;
};

struct Options {
    // The reference instant, in the local zone: "today" and "tomorrow" are read from it.
    QDateTime now = QDateTime::currentDateTime();
    QList<ProjectNames> projects;
    // The project open where the line is typed, by name: a /List without a #Project is looked
    // for among its lists before the others'.
    QString openProject;
    // Phrases the user took back: no phrase overlapping one of them is recognised again, so
    // their words stay in the title. Matched by place and text, so a change elsewhere in the
    // line keeps them; one whose text moved no longer applies.
    QList<Phrase> dismissed;
};

struct Fields {
    QString title;
    std::optional<QDate> dueDay;
    std::optional<QTime> dueTime;
    std::optional<TaskRecurrenceEntity> recurrence;
    std::optional<EisenhowerTagEnum> quadrant;
    std::optional<int> reminderMinutesBefore;
    // The project and list as the user has them named; empty when the text names none. A list
    // named without a project picks the project that has it.
    QString project;
    QString list;
    // A #word or /word that names no project or list of the user's: it stays in the title, and
    // a screen that files the task somewhere says so instead of guessing.
    QString unknownProject;
    QString unknownList;
    // In the order they appear in the text.
    QList<Phrase> phrases;

    // The due instant: midnight UTC of the day for a day alone, the local day and time otherwise.
    std::optional<QDateTime> dueDate() const;
    // Sets the title, due date, rule, quadrant and reminder of task (not its project or list).
    void applyTo(TaskEntity& task) const;
};

Fields parse(const QString& text, const Options& options = {});

// The phrase kind's name in the UI's language ("Date", "Fecha", ...), for a chip's tooltip.
QString kindLabel(PhraseKindEnum kind);

} // namespace QuickAddParser
