#pragma once

#include <QString>

// Every fixed text of the Tasks module: English from the rules and the local store, Spanish
// from the backend.
namespace TaskMessages {

namespace Project {
inline const QString blankName = QStringLiteral("The project name cannot be empty");
inline const QString unstorableName = QStringLiteral("The project name holds a broken character (a lone surrogate)");
inline const QString notFound = QStringLiteral("The project does not exist");
inline const QString notOwned = QStringLiteral("This project does not belong to the given user");
inline const QString hasTaskLists = QStringLiteral("The project still has task lists");
inline const QString remoteNotFound = QStringLiteral("proyecto no encontrado");
inline const QString remoteBadId = QStringLiteral("el servidor devolvió un proyecto con un id inválido");
} // namespace Project

namespace TaskList {
inline const QString blankName = QStringLiteral("The task list name cannot be empty");
inline const QString unstorableName = QStringLiteral("The task list name holds a broken character (a lone surrogate)");
inline const QString missingParent = QStringLiteral("The parent project does not exist");
inline const QString notFound = QStringLiteral("The task list does not exist");
inline const QString listingFailed = QStringLiteral("Could not load the project's task lists");
inline const QString remoteNotFound = QStringLiteral("listado no encontrado");
inline const QString remoteBadId = QStringLiteral("el servidor devolvió un listado con un id inválido");
} // namespace TaskList

namespace Task {
inline const QString blankTitle = QStringLiteral("The task title cannot be empty");
inline const QString unstorableTitle = QStringLiteral("The task title holds a broken character (a lone surrogate)");
inline const QString missingParent = QStringLiteral("The parent task list does not exist");
inline const QString notFound = QStringLiteral("The task does not exist");
inline const QString notRepeating = QStringLiteral("The task does not repeat");
inline const QString lastOccurrence = QStringLiteral("This is the last time the task repeats; mark it done instead");
inline const QString badRecurrence = QStringLiteral("The repetition needs an interval of at least 1 and valid days");
inline const QString badReminder = QStringLiteral("A reminder needs a due date and cannot be after it");
inline const QString remoteNotFound = QStringLiteral("tarea no encontrada");
inline const QString remoteBadId = QStringLiteral("el servidor devolvió una tarea con un id inválido");
} // namespace Task

namespace DailyTask {
inline const QString blankTitle = QStringLiteral("The daily task title cannot be empty");
inline const QString unstorableTitle
    = QStringLiteral("The daily task title holds a broken character (a lone surrogate)");
inline const QString notFound = QStringLiteral("The daily task does not exist");
inline const QString remoteNotFound = QStringLiteral("tarea diaria no encontrada");
inline const QString remoteBadId = QStringLiteral("el servidor devolvió una tarea diaria con un id inválido");
} // namespace DailyTask

namespace Bitacora {
inline const QString notFound = QStringLiteral("The bitacora entry does not exist");
inline const QString notOwned = QStringLiteral("This bitacora entry does not belong to the given user");
inline const QString remoteNotFound = QStringLiteral("entrada de bitácora no encontrada");
inline const QString remoteBadId = QStringLiteral("el servidor devolvió una entrada de bitácora con un id inválido");
} // namespace Bitacora

// A local repository whose store cannot be opened and whose opener gave no text.
inline const QString databaseOpenFailed = QStringLiteral("Failed to open the database");

} // namespace TaskMessages
