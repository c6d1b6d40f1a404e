<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name></name>
    <message id="account-copy-again-hint">
        <source>What was copied stays; copying again adds the rest.</source>
        <translation>Lo copiado se queda; copiar de nuevo añade el resto.</translation>
    </message>
    <message id="account-copy-button">
        <source>Copy to this computer</source>
        <translation>Copiar a este equipo</translation>
    </message>
    <message id="account-copy-copying">
        <source>Copying to this computer…</source>
        <translation>Copiando a este equipo…</translation>
    </message>
    <message id="account-copy-done">
        <source>A copy of %1 items is on this computer and was checked. Copying again adds what is new.</source>
        <translation>Hay una copia de %1 elementos en este equipo y se ha comprobado. Copiar de nuevo añade lo nuevo.</translation>
    </message>
    <message id="account-copy-explanation">
        <source>Copies this account's projects, lists, tasks, logbook and the daily tasks of the last two years to this computer, encrypted. A local account set up here later starts with them.</source>
        <translation>Copia a este equipo, cifrados, los proyectos, listas, tareas, la bitácora y las tareas diarias de los dos últimos años de esta cuenta. Una cuenta local creada aquí más adelante empieza con ellos.</translation>
    </message>
    <message id="account-copy-title">
        <source>Keep a copy on this computer</source>
        <translation>Guardar una copia en este equipo</translation>
    </message>
    <message id="account-move-button">
        <source>Move to a Google account…</source>
        <translation>Pasar a una cuenta de Google…</translation>
    </message>
    <message id="account-move-confirm-button">
        <source>Sign in and copy</source>
        <translation>Iniciar sesión y copiar</translation>
    </message>
    <message id="account-move-confirmation-title">
        <source>Copy everything to a Google account?</source>
        <translation>¿Copiar todo a una cuenta de Google?</translation>
    </message>
    <message id="account-move-copying">
        <source>Copying to your Google account…</source>
        <translation>Copiando a tu cuenta de Google…</translation>
    </message>
    <message id="account-move-differs">
        <source>Records did not arrive as they were sent (%1 of them, among them “%2”). Nothing was deleted; try again.</source>
        <translation>Algunos registros no llegaron tal como se enviaron (%1, entre ellos «%2»). No se ha borrado nada; vuelve a intentarlo.</translation>
    </message>
    <message id="account-move-done">
        <source>Everything is on your Google account and was checked there: %1 items, %2 of them already there before. This computer keeps its copy.</source>
        <translation>Todo está en tu cuenta de Google y se ha comprobado allí: %1 elementos, %2 de ellos ya estaban. Este equipo conserva su copia.</translation>
    </message>
    <message id="account-move-explanation">
        <source>Sign in with Google and copy your projects, lists, tasks, daily tasks and logbook there. This computer keeps its copy.</source>
        <translation>Inicia sesión con Google y copia allí tus proyectos, listas, tareas, tareas diarias y bitácora. Este equipo conserva su copia.</translation>
    </message>
    <message id="account-move-finish-button">
        <source>Finish moving</source>
        <translation>Terminar el traslado</translation>
    </message>
    <message id="account-move-finish-hint">
        <source>What was copied stays; “Finish moving” copies the rest.</source>
        <translation>Lo copiado se queda; «Terminar el traslado» copia el resto.</translation>
    </message>
    <message id="account-move-sign-in-failed">
        <source>Google sign-in did not work, so nothing was copied: %1</source>
        <translation>El inicio de sesión con Google no funcionó, así que no se copió nada: %1</translation>
    </message>
    <message id="account-move-signing-in">
        <source>Signing in with Google…</source>
        <translation>Iniciando sesión con Google…</translation>
    </message>
    <message id="account-move-stopped">
        <source>Stopped.</source>
        <translation>Detenido.</translation>
    </message>
    <message id="account-move-title">
        <source>Move to a Google account</source>
        <translation>Pasar a una cuenta de Google</translation>
    </message>
    <message id="account-move-unfinished">
        <source>The data of your local account is not all on this Google account yet. Nothing was lost: finishing copies what is missing.</source>
        <translation>Los datos de tu cuenta local aún no están todos en esta cuenta de Google. No se ha perdido nada: al terminar se copia lo que falta.</translation>
    </message>
    <message id="accounts-add-button">
        <source>Add account</source>
        <translation>Añadir cuenta</translation>
    </message>
    <message id="accounts-delete-button">
        <source>Remove account</source>
        <translation>Quitar cuenta</translation>
    </message>
    <message id="accounts-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="accounts-delete-confirm-button">
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message id="accounts-delete-confirmation-title">
        <source>Remove this account?</source>
        <translation>¿Quitar esta cuenta?</translation>
    </message>
    <message id="accounts-email-field">
        <source>E-mail</source>
        <translation>Correo electrónico</translation>
    </message>
    <message id="accounts-empty-state-text">
        <source>No calendar accounts added yet. The schedule shows the calendars of this computer; add an account here to turn its calendars on or off.</source>
        <translation>Aún no has añadido cuentas de calendario. La agenda muestra los calendarios de este ordenador; añade una cuenta aquí para activar o desactivar sus calendarios.</translation>
    </message>
    <message id="accounts-enable-toggle">
        <source>Use this account's calendars</source>
        <translation>Usar los calendarios de esta cuenta</translation>
    </message>
    <message id="accounts-permission-denied-message">
        <source>The desktop's calendar service did not answer. Check that your calendar accounts are set up and that the service is running.</source>
        <translation>El servicio de calendarios del escritorio no respondió. Comprueba que tus cuentas de calendario estén configuradas y que el servicio esté en marcha.</translation>
    </message>
    <message id="accounts-permission-denied-open-settings-button">
        <source>Open settings</source>
        <translation>Abrir configuración</translation>
    </message>
    <message id="accounts-permission-denied-title">
        <source>Tolvane cannot read your calendars</source>
        <translation>Tolvane no puede leer tus calendarios</translation>
    </message>
    <message id="accounts-provider-eventkit-name">
        <source>Calendars of this computer</source>
        <translation>Calendarios de este ordenador</translation>
    </message>
    <message id="accounts-provider-picker-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="accounts-provider-picker-continue-button">
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message id="accounts-provider-picker-title">
        <source>Add a calendar account</source>
        <translation>Añadir una cuenta de calendario</translation>
    </message>
    <message id="accounts-select-account-text">
        <source>Choose an account to see its details.</source>
        <translation>Elige una cuenta para ver sus detalles.</translation>
    </message>
    <message id="alarm-close-minimise-button">
        <source>Keep running</source>
        <translation>Seguir abierto</translation>
    </message>
    <message id="alarm-close-quit-button">
        <source>Quit anyway</source>
        <translation>Salir de todos modos</translation>
    </message>
    <message id="alarm-close-without-tray-text">
        <source>Tolvane stays open, minimised, so that they ring. If you quit, no alarm rings until you open Tolvane again.</source>
        <translation>Tolvane sigue abierto, minimizado, para que suenen. Si sales, ninguna alarma sonará hasta que vuelvas a abrir Tolvane.</translation>
    </message>
    <message id="alarm-close-without-tray-title">
        <source>Alarms are pending, and this desktop has no tray to keep Tolvane in.</source>
        <translation>Hay alarmas pendientes y este escritorio no tiene bandeja donde dejar Tolvane.</translation>
    </message>
    <message id="alarm-tray-quit">
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message id="alarm-tray-show">
        <source>Show Tolvane</source>
        <translation>Mostrar Tolvane</translation>
    </message>
    <message id="alarm-tray-tooltip">
        <source>Tolvane: alarms pending</source>
        <translation>Tolvane: alarmas pendientes</translation>
    </message>
    <message id="alarm-tray-tooltip-background">
        <source>Tolvane</source>
        <translation>Tolvane</translation>
    </message>
    <message id="app-command-line-description">
        <source>Plan your day: schedule, projects and a daily logbook.</source>
        <translation>Planifica tu día: agenda, proyectos y una bitácora diaria.</translation>
    </message>
    <message id="app-option-background">
        <source>Start without a window, in the system tray, so that alarms ring.</source>
        <translation>Iniciar sin ventana, en la bandeja del sistema, para que suenen las alarmas.</translation>
    </message>
    <message id="app-option-bad-date">
        <source>Not a day: “%1”. Write it as YYYY-MM-DD, for example 2026-12-01.</source>
        <translation>No es un día: «%1». Escríbelo como AAAA-MM-DD, por ejemplo 2026-12-01.</translation>
    </message>
    <message id="app-option-date">
        <source>Open the schedule on this day (YYYY-MM-DD).</source>
        <translation>Abrir la agenda en este día (AAAA-MM-DD).</translation>
    </message>
    <message id="app-option-empty-quick-add">
        <source>--quick-add needs the text of the task.</source>
        <translation>--quick-add necesita el texto de la tarea.</translation>
    </message>
    <message id="app-option-quick-add">
        <source>Add a task typed in one line, such as "Pay rent tomorrow #Home".</source>
        <translation>Añadir una tarea escrita en una línea, como "Pagar el alquiler mañana #Casa".</translation>
    </message>
    <message id="app-option-try-help">
        <source>Try “tolvane --help” for the options.</source>
        <translation>Prueba «tolvane --help» para ver las opciones.</translation>
    </message>
    <message id="app-option-unexpected-argument">
        <source>Unexpected argument: %1</source>
        <translation>Argumento inesperado: %1</translation>
    </message>
    <message id="bitacora-choose-day-button">
        <source>Choose a day</source>
        <translation>Elegir un día</translation>
    </message>
    <message id="bitacora-delete-button">
        <source>Delete this day's entry</source>
        <translation>Eliminar la entrada de este día</translation>
    </message>
    <message id="bitacora-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="bitacora-delete-confirm-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="bitacora-delete-confirmation-title">
        <source>Delete this day's entry?</source>
        <translation>¿Eliminar la entrada de este día?</translation>
    </message>
    <message id="bitacora-deleting-state">
        <source>Deleting…</source>
        <translation>Eliminando…</translation>
    </message>
    <message id="bitacora-entry-placeholder">
        <source>Write what happened in this project today</source>
        <translation>Escribe lo que pasó hoy en este proyecto</translation>
    </message>
    <message id="bitacora-next-day-button">
        <source>Next day</source>
        <translation>Día siguiente</translation>
    </message>
    <message id="bitacora-no-projects-state">
        <source>Create a project in the projects workspace to start its logbook.</source>
        <translation>Crea un proyecto en el espacio de proyectos para empezar su bitácora.</translation>
    </message>
    <message id="bitacora-previous-day-button">
        <source>Previous day</source>
        <translation>Día anterior</translation>
    </message>
    <message id="bitacora-unsaved-entry-keeps-day">
        <source>The entry of “%1” could not be saved yet, so this day stays open. Tolvane keeps trying.</source>
        <translation>La entrada de «%1» aún no se ha podido guardar, así que este día sigue abierto. Tolvane lo sigue intentando.</translation>
    </message>
    <message id="create-event-all-day-toggle">
        <source>All day</source>
        <translation>Todo el día</translation>
    </message>
    <message id="create-event-calendar-label">
        <source>Calendar</source>
        <translation>Calendario</translation>
    </message>
    <message id="create-event-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="create-event-deleted-elsewhere">
        <source>This event was deleted in another program. What you typed is kept; copy it before closing.</source>
        <translation>Otro programa ha eliminado este evento. Lo que escribiste se conserva; cópialo antes de cerrar.</translation>
    </message>
    <message id="create-event-description-label">
        <source>Description</source>
        <translation>Descripción</translation>
    </message>
    <message id="create-event-description-placeholder">
        <source>Add a description</source>
        <translation>Añade una descripción</translation>
    </message>
    <message id="create-event-duration-caption-format">
        <source>Lasts %1 h %2 min</source>
        <translation>Dura %1 h %2 min</translation>
    </message>
    <message id="create-event-end-before-start-error">
        <source>The event cannot end before it starts.</source>
        <translation>El evento no puede terminar antes de empezar.</translation>
    </message>
    <message id="create-event-end-label">
        <source>Ends</source>
        <translation>Termina</translation>
    </message>
    <message id="create-event-generic-error">
        <source>The event could not be saved.</source>
        <translation>No se pudo guardar el evento.</translation>
    </message>
    <message id="create-event-link-invalid-error">
        <source>The link is not a web address.</source>
        <translation>El enlace no es una dirección web.</translation>
    </message>
    <message id="create-event-link-label">
        <source>Link</source>
        <translation>Enlace</translation>
    </message>
    <message id="create-event-location-label">
        <source>Location</source>
        <translation>Lugar</translation>
    </message>
    <message id="create-event-location-placeholder">
        <source>Add a place</source>
        <translation>Añade un lugar</translation>
    </message>
    <message id="create-event-repeat-all-days">
        <source>Repeats every day</source>
        <translation>Se repite todos los días</translation>
    </message>
    <message id="create-event-repeat-every-day-format">
        <source>Repeats every %1</source>
        <translation>Se repite todos los %1</translation>
    </message>
    <message id="create-event-repeat-label">
        <source>Repeat</source>
        <translation>Repetir</translation>
    </message>
    <message id="create-event-repeat-list-conjunction">
        <source>and</source>
        <translation>y</translation>
    </message>
    <message id="create-event-repeat-monthly">
        <source>Repeats every month</source>
        <translation>Se repite cada mes</translation>
    </message>
    <message id="create-event-repeat-option-day">
        <source>Every day</source>
        <translation>Cada día</translation>
    </message>
    <message id="create-event-repeat-option-month">
        <source>Every month</source>
        <translation>Cada mes</translation>
    </message>
    <message id="create-event-repeat-option-never">
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message id="create-event-repeat-option-week">
        <source>Every week</source>
        <translation>Cada semana</translation>
    </message>
    <message id="create-event-repeat-select-day-hint">
        <source>Choose the days it repeats on</source>
        <translation>Elige los días en que se repite</translation>
    </message>
    <message id="create-event-repeat-weekdays">
        <source>Repeats on weekdays</source>
        <translation>Se repite entre semana</translation>
    </message>
    <message id="create-event-repeat-weekend">
        <source>Repeats on weekends</source>
        <translation>Se repite los fines de semana</translation>
    </message>
    <message id="create-event-save-button">
        <source>Save</source>
        <translation>Guardar</translation>
    </message>
    <message id="create-event-sheet-title">
        <source>New event</source>
        <translation>Nuevo evento</translation>
    </message>
    <message id="create-event-sheet-title-edit">
        <source>Edit event</source>
        <translation>Editar evento</translation>
    </message>
    <message id="create-event-start-label">
        <source>Starts</source>
        <translation>Empieza</translation>
    </message>
    <message id="create-event-title-placeholder">
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message id="create-event-title-required-error">
        <source>Give the event a title.</source>
        <translation>Ponle un título al evento.</translation>
    </message>
    <message id="create-event-whole-series-note">
        <source>This event repeats: the change applies to every occurrence.</source>
        <translation>Este evento se repite: el cambio se aplica a todas sus repeticiones.</translation>
    </message>
    <message id="daily-events-all-day-empty-state-text">
        <source>No all-day events</source>
        <translation>Sin eventos de todo el día</translation>
    </message>
    <message id="daily-events-all-day-section-title">
        <source>All day</source>
        <translation>Todo el día</translation>
    </message>
    <message id="daily-events-end-hour-label">
        <source>to</source>
        <translation>a</translation>
    </message>
    <message id="daily-events-permission-denied-message">
        <source>Tolvane cannot read your calendars. Check that the desktop's calendar service is running and try again.</source>
        <translation>Tolvane no puede leer tus calendarios. Comprueba que el servicio de calendario del escritorio está en marcha y vuelve a intentarlo.</translation>
    </message>
    <message id="daily-events-permission-denied-title">
        <source>No access to your calendars</source>
        <translation>Sin acceso a tus calendarios</translation>
    </message>
    <message id="daily-events-start-hour-label">
        <source>Hours from</source>
        <translation>Horas de</translation>
    </message>
    <message id="daily-events-today-button">
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message id="daily-task-add-button">
        <source>Add a task for the day</source>
        <translation>Añadir una tarea del día</translation>
    </message>
    <message id="daily-task-empty-state">
        <source>Nothing planned for this day</source>
        <translation>Nada previsto para este día</translation>
    </message>
    <message id="daily-task-title-plural">
        <source>Tasks of the day</source>
        <translation>Tareas del día</translation>
    </message>
    <message id="daily-task-title-singular">
        <source>Task of the day</source>
        <translation>Tarea del día</translation>
    </message>
    <message id="data-settings-backup-date">
        <source>Date</source>
        <translation>Fecha</translation>
    </message>
    <message id="data-settings-backup-done">
        <source>Backed up.</source>
        <translation>Copia hecha.</translation>
    </message>
    <message id="data-settings-backup-items">
        <source>Items</source>
        <translation>Elementos</translation>
    </message>
    <message id="data-settings-backup-kind">
        <source>Kind</source>
        <translation>Tipo</translation>
    </message>
    <message id="data-settings-backup-no-keys">
        <source>The keyring could not be read; no backup was made.</source>
        <translation>No se pudo leer el llavero; no se hizo ninguna copia.</translation>
    </message>
    <message id="data-settings-backup-now">
        <source>Back up now</source>
        <translation>Hacer copia ahora</translation>
    </message>
    <message id="data-settings-backup-reason-daily">
        <source>Daily</source>
        <translation>Diaria</translation>
    </message>
    <message id="data-settings-backup-reason-migration">
        <source>Before an update</source>
        <translation>Antes de una actualización</translation>
    </message>
    <message id="data-settings-backup-reason-restore">
        <source>Before a restore</source>
        <translation>Antes de una restauración</translation>
    </message>
    <message id="data-settings-backups-hint">
        <source>Tolvane keeps an encrypted copy of its local data every day: the last 7 days and 4 weeks.</source>
        <translation>Tolvane guarda cada día una copia cifrada de sus datos locales: los últimos 7 días y 4 semanas.</translation>
    </message>
    <message id="data-settings-backups-title">
        <source>Backups</source>
        <translation>Copias de seguridad</translation>
    </message>
    <message id="data-settings-cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="data-settings-csv-done-column">
        <source>Done</source>
        <translation>Hecha</translation>
    </message>
    <message id="data-settings-csv-due-column">
        <source>Due date</source>
        <translation>Fecha límite</translation>
    </message>
    <message id="data-settings-csv-empty">
        <source>The file holds no rows.</source>
        <translation>El archivo no tiene filas.</translation>
    </message>
    <message id="data-settings-csv-import-done">
        <source>Imported %1 tasks; %2 rows without a title were left out.</source>
        <translation>Se importaron %1 tareas; se omitieron %2 filas sin título.</translation>
    </message>
    <message id="data-settings-csv-mapping-title">
        <source>Import tasks from CSV</source>
        <translation>Importar tareas de CSV</translation>
    </message>
    <message id="data-settings-csv-no-column">
        <source>(none)</source>
        <translation>(ninguna)</translation>
    </message>
    <message id="data-settings-csv-quadrant-column">
        <source>Quadrant</source>
        <translation>Cuadrante</translation>
    </message>
    <message id="data-settings-csv-target-list">
        <source>Into the list</source>
        <translation>En la lista</translation>
    </message>
    <message id="data-settings-csv-title-column">
        <source>Title</source>
        <translation>Título</translation>
    </message>
    <message id="data-settings-export-csv">
        <source>Tasks to CSV…</source>
        <translation>Tareas a CSV…</translation>
    </message>
    <message id="data-settings-export-dialog">
        <source>Export tasks</source>
        <translation>Exportar tareas</translation>
    </message>
    <message id="data-settings-export-done">
        <source>Exported.</source>
        <translation>Exportado.</translation>
    </message>
    <message id="data-settings-export-ics">
        <source>Meets to .ics…</source>
        <translation>Reuniones a .ics…</translation>
    </message>
    <message id="data-settings-export-ics-dialog">
        <source>Export meets</source>
        <translation>Exportar reuniones</translation>
    </message>
    <message id="data-settings-export-json">
        <source>Tasks to JSON…</source>
        <translation>Tareas a JSON…</translation>
    </message>
    <message id="data-settings-export-label">
        <source>Export</source>
        <translation>Exportar</translation>
    </message>
    <message id="data-settings-export-markdown">
        <source>Logbook to Markdown…</source>
        <translation>Bitácora a Markdown…</translation>
    </message>
    <message id="data-settings-export-markdown-dialog">
        <source>Choose a folder for the logbook</source>
        <translation>Elige una carpeta para la bitácora</translation>
    </message>
    <message id="data-settings-import-csv">
        <source>Import tasks from CSV…</source>
        <translation>Importar tareas de CSV…</translation>
    </message>
    <message id="data-settings-import-done">
        <source>Imported %1 items; %2 were already there and were skipped.</source>
        <translation>Se importaron %1 elementos; %2 ya existían y se omitieron.</translation>
    </message>
    <message id="data-settings-import-json">
        <source>Import JSON…</source>
        <translation>Importar JSON…</translation>
    </message>
    <message id="data-settings-import-json-dialog">
        <source>Import tasks</source>
        <translation>Importar tareas</translation>
    </message>
    <message id="data-settings-meets-from">
        <source>Meets from</source>
        <translation>Reuniones del</translation>
    </message>
    <message id="data-settings-meets-to">
        <source>to</source>
        <translation>al</translation>
    </message>
    <message id="data-settings-restore">
        <source>Restore…</source>
        <translation>Restaurar…</translation>
    </message>
    <message id="data-settings-restore-confirm">
        <source>Restore</source>
        <translation>Restaurar</translation>
    </message>
    <message id="data-settings-restore-done">
        <source>Restored. The data from before is kept as a backup of its own.</source>
        <translation>Restaurado. Los datos anteriores se guardan como una copia propia.</translation>
    </message>
    <message id="data-settings-restore-explanation">
        <source>Your local data goes back to how it was on %1. The current data is backed up first, so this can be undone by restoring that backup.</source>
        <translation>Tus datos locales vuelven a como estaban el %1. Antes se hace una copia de los datos actuales, así que puedes deshacerlo restaurando esa copia.</translation>
    </message>
    <message id="data-settings-restore-question">
        <source>Restore this backup?</source>
        <translation>¿Restaurar esta copia?</translation>
    </message>
    <message id="data-settings-scope-everything">
        <source>Everything</source>
        <translation>Todo</translation>
    </message>
    <message id="data-settings-transfer-cancelled">
        <source>Cancelled. What was already imported stays; importing the same file again adds the rest.</source>
        <translation>Cancelado. Lo ya importado se queda; importar de nuevo el mismo archivo añade el resto.</translation>
    </message>
    <message id="data-settings-transfer-title">
        <source>Export and import</source>
        <translation>Exportar e importar</translation>
    </message>
    <message id="detail-select-option-text">
        <source>Choose a workspace in the sidebar</source>
        <translation>Elige un espacio de trabajo en la barra lateral</translation>
    </message>
    <message id="eisenhower-matrix-quadrant-empty">
        <source>Drop tasks here</source>
        <translation>Arrastra tareas aquí</translation>
    </message>
    <message id="eisenhower-tag-delegate">
        <source>Delegate</source>
        <translation>Delegar</translation>
    </message>
    <message id="eisenhower-tag-delete">
        <source>Eliminate</source>
        <translation>Eliminar</translation>
    </message>
    <message id="eisenhower-tag-do">
        <source>Do now</source>
        <translation>Hacer ya</translation>
    </message>
    <message id="eisenhower-tag-menu-title">
        <source>Quadrant</source>
        <translation>Cuadrante</translation>
    </message>
    <message id="eisenhower-tag-none">
        <source>No quadrant</source>
        <translation>Sin cuadrante</translation>
    </message>
    <message id="eisenhower-tag-planning">
        <source>Plan</source>
        <translation>Planificar</translation>
    </message>
    <message id="info-console-copy-button">
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message id="info-console-empty-message">
        <source>Nothing recorded yet.</source>
        <translation>Aún no hay nada registrado.</translation>
    </message>
    <message id="info-console-logging-label">
        <source>Record failures</source>
        <translation>Registrar fallos</translation>
    </message>
    <message id="info-console-title">
        <source>Information console</source>
        <translation>Consola de información</translation>
    </message>
    <message id="meet-alarm-banner-style-warning">
        <source>The desktop cannot show Tolvane's notifications right now, so alarms will not appear. Check the notification settings.</source>
        <translation>El escritorio no puede mostrar ahora las notificaciones de Tolvane, así que las alarmas no aparecerán. Revisa la configuración de notificaciones.</translation>
    </message>
    <message id="meet-alarm-button">
        <source>Alarm</source>
        <translation>Alarma</translation>
    </message>
    <message id="meet-alarm-day-button">
        <source>Alarms for the day</source>
        <translation>Alarmas del día</translation>
    </message>
    <message id="meet-alarm-delete-all-button">
        <source>Delete all alarms</source>
        <translation>Eliminar todas las alarmas</translation>
    </message>
    <message id="meet-alarm-delete-all-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="meet-alarm-delete-all-confirm-button">
        <source>Delete all</source>
        <translation>Eliminar todas</translation>
    </message>
    <message id="meet-alarm-delete-all-confirmation-title">
        <source>Delete every alarm?</source>
        <translation>¿Eliminar todas las alarmas?</translation>
    </message>
    <message id="meet-alarm-message-error">
        <source>The message must include {event} where the event's name goes</source>
        <translation>El mensaje debe incluir {event} donde va el nombre del evento</translation>
    </message>
    <message id="meet-alarm-message-hint">
        <source>Write {event} where the meet's name goes, or leave it empty for the usual sentence.</source>
        <translation>Escribe {event} donde va el nombre de la reunión, o déjalo vacío para la frase habitual.</translation>
    </message>
    <message id="meet-alarm-message-title">
        <source>Spoken message</source>
        <translation>Mensaje hablado</translation>
    </message>
    <message id="meet-alarm-mode-funk">
        <source>Bell</source>
        <translation>Campana</translation>
    </message>
    <message id="meet-alarm-mode-hero">
        <source>Alarm clock</source>
        <translation>Despertador</translation>
    </message>
    <message id="meet-alarm-mode-title">
        <source>Alarm sound</source>
        <translation>Sonido de la alarma</translation>
    </message>
    <message id="meet-alarm-mode-voice">
        <source>Spoken sentence</source>
        <translation>Frase hablada</translation>
    </message>
    <message id="meet-alarm-notification-body">
        <source>Your event is starting</source>
        <translation>Tu evento está comenzando</translation>
    </message>
    <message id="meet-alarm-open-action">
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message id="meet-alarm-open-notification-settings-button">
        <source>Notification settings</source>
        <translation>Configuración de notificaciones</translation>
    </message>
    <message id="meet-alarm-refused-title">
        <source>The alarm was not set</source>
        <translation>La alarma no se activó</translation>
    </message>
    <message id="meet-alarm-sample-preview-button">
        <source>Play a sample</source>
        <translation>Probar un ejemplo</translation>
    </message>
    <message id="meet-alarm-voice-language-english">
        <source>English</source>
        <translation>Inglés</translation>
    </message>
    <message id="meet-alarm-voice-language-spanish">
        <source>Spanish</source>
        <translation>Español</translation>
    </message>
    <message id="meet-alarm-voice-language-title">
        <source>Voice language</source>
        <translation>Idioma de la voz</translation>
    </message>
    <message id="meet-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="meet-delete-confirm-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="meet-delete-confirmation-title">
        <source>Delete this event?</source>
        <translation>¿Eliminar este evento?</translation>
    </message>
    <message id="meet-delete-whole-series-note">
        <source>Every occurrence of this repeating event is deleted.</source>
        <translation>Se eliminan todas las repeticiones de este evento.</translation>
    </message>
    <message id="meet-detail-delete-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="meet-detail-edit-button">
        <source>Edit</source>
        <translation>Editar</translation>
    </message>
    <message id="meet-detail-join-button">
        <source>Join</source>
        <translation>Unirse</translation>
    </message>
    <message id="meet-move-failed-title">
        <source>The event was not moved</source>
        <translation>El evento no se ha movido</translation>
    </message>
    <message id="meet-task-done-checkbox">
        <source>Task done</source>
        <translation>Tarea hecha</translation>
    </message>
    <message id="menu-app">
        <source>&amp;Tolvane</source>
        <translation>&amp;Tolvane</translation>
    </message>
    <message id="menu-day">
        <source>&amp;Day</source>
        <translation>&amp;Día</translation>
    </message>
    <message id="menu-edit">
        <source>&amp;Edit</source>
        <translation>&amp;Editar</translation>
    </message>
    <message id="menu-quick-add">
        <source>Quick add…</source>
        <translation>Añadir rápido…</translation>
    </message>
    <message id="menu-quit">
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message id="menu-search">
        <source>Search…</source>
        <translation>Buscar…</translation>
    </message>
    <message id="menu-view">
        <source>&amp;View</source>
        <translation>&amp;Ver</translation>
    </message>
    <message id="project-overview-empty-state">
        <source>This project has no lists yet.</source>
        <translation>Este proyecto aún no tiene listados.</translation>
    </message>
    <message id="projects-add-button">
        <source>Add project</source>
        <translation>Añadir proyecto</translation>
    </message>
    <message id="projects-delete-button">
        <source>Delete project</source>
        <translation>Eliminar proyecto</translation>
    </message>
    <message id="projects-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="projects-delete-confirm-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="projects-delete-confirmation-title">
        <source>Delete this project?</source>
        <translation>¿Eliminar este proyecto?</translation>
    </message>
    <message id="projects-delete-has-lists-text">
        <source>Delete its lists first; then the project can be deleted.</source>
        <translation>Elimina antes sus listas; después se podrá eliminar el proyecto.</translation>
    </message>
    <message id="projects-delete-has-lists-title">
        <source>“%1” still has lists</source>
        <translation>«%1» todavía tiene listas</translation>
    </message>
    <message id="projects-edit-button">
        <source>Rename</source>
        <translation>Renombrar</translation>
    </message>
    <message id="projects-empty-state">
        <source>No projects yet. Add your first one below.</source>
        <translation>Aún no hay proyectos. Añade el primero abajo.</translation>
    </message>
    <message id="projects-loading-state">
        <source>Loading…</source>
        <translation>Cargando…</translation>
    </message>
    <message id="projects-screen-title">
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message id="projects-show-every-day-button">
        <source>Show every day</source>
        <translation>Mostrar todos los días</translation>
    </message>
    <message id="quick-add-chip-remove">
        <source>Keep these words in the title</source>
        <translation>Dejar estas palabras en el título</translation>
    </message>
    <message id="quick-add-done">
        <source>Added “%1” to %2 / %3.</source>
        <translation>Se añadió «%1» a %2 / %3.</translation>
    </message>
    <message id="quick-add-empty">
        <source>Type the task first, for example “Call Ana tomorrow at 3pm”.</source>
        <translation>Escribe primero la tarea, por ejemplo «Llamar a Ana mañana a las 5».</translation>
    </message>
    <message id="quick-add-failed">
        <source>The task “%1” was not added: %2</source>
        <translation>La tarea «%1» no se añadió: %2</translation>
    </message>
    <message id="quick-add-kind-date">
        <source>Date</source>
        <translation>Fecha</translation>
    </message>
    <message id="quick-add-kind-list">
        <source>List</source>
        <translation>Lista</translation>
    </message>
    <message id="quick-add-kind-project">
        <source>Project</source>
        <translation>Proyecto</translation>
    </message>
    <message id="quick-add-kind-quadrant">
        <source>Quadrant</source>
        <translation>Cuadrante</translation>
    </message>
    <message id="quick-add-kind-recurrence">
        <source>Repeats</source>
        <translation>Repetición</translation>
    </message>
    <message id="quick-add-kind-reminder">
        <source>Reminder</source>
        <translation>Aviso</translation>
    </message>
    <message id="quick-add-kind-time">
        <source>Time</source>
        <translation>Hora</translation>
    </message>
    <message id="quick-add-no-account">
        <source>The task “%1” was not added: sign in or create a local account first.</source>
        <translation>La tarea «%1» no se añadió: inicia sesión o crea primero una cuenta local.</translation>
    </message>
    <message id="quick-add-no-list">
        <source>The task “%1” was not added: the project “%2” has no task list.</source>
        <translation>La tarea «%1» no se añadió: el proyecto «%2» no tiene ninguna lista de tareas.</translation>
    </message>
    <message id="quick-add-no-project">
        <source>The task “%1” was not added: you have no project yet. Create one in Projects first.</source>
        <translation>La tarea «%1» no se añadió: aún no tienes ningún proyecto. Crea uno primero en Proyectos.</translation>
    </message>
    <message id="quick-add-no-title">
        <source>The task “%1” was not added: it needs a title besides the day, time and other details.</source>
        <translation>La tarea «%1» no se añadió: necesita un título además del día, la hora y los demás detalles.</translation>
    </message>
    <message id="quick-add-placeholder">
        <source>Call Ana tomorrow at 3pm #Project /List !1</source>
        <translation>Llamar a Ana mañana a las 5 #Proyecto /Lista !1</translation>
    </message>
    <message id="quick-add-title">
        <source>Quick add</source>
        <translation>Añadir rápido</translation>
    </message>
    <message id="quick-add-unknown-list">
        <source>The task “%1” was not added: the project “%2” has no list named “%3”.</source>
        <translation>La tarea «%1» no se añadió: el proyecto «%2» no tiene ninguna lista llamada «%3».</translation>
    </message>
    <message id="quick-add-unknown-project">
        <source>The task “%1” was not added: you have no project named “%2”.</source>
        <translation>La tarea «%1» no se añadió: no tienes ningún proyecto llamado «%2».</translation>
    </message>
    <message id="redo-changed-elsewhere">
        <source>Can't redo %1: it was changed elsewhere since. Nothing was changed.</source>
        <translation>No se puede rehacer %1: se cambió en otro lugar desde entonces. No se ha cambiado nada.</translation>
    </message>
    <message id="rituals-moved-many">
        <source>%1 daily tasks moved to today.</source>
        <translation>%1 tareas diarias movidas a hoy.</translation>
    </message>
    <message id="rituals-moved-one">
        <source>1 daily task moved to today.</source>
        <translation>1 tarea diaria movida a hoy.</translation>
    </message>
    <message id="rituals-no-account">
        <source>Sign in or create a local account to plan your days.</source>
        <translation>Inicia sesión o crea una cuenta local para planificar tus días.</translation>
    </message>
    <message id="rituals-plan-checklist">
        <source>Today's checklist</source>
        <translation>Lista de hoy</translation>
    </message>
    <message id="rituals-plan-due-tasks">
        <source>Tasks due</source>
        <translation>Tareas que vencen</translation>
    </message>
    <message id="rituals-plan-earlier">
        <source>Left over from earlier days</source>
        <translation>Pendiente de días anteriores</translation>
    </message>
    <message id="rituals-plan-meets">
        <source>Today's meets</source>
        <translation>Reuniones de hoy</translation>
    </message>
    <message id="rituals-plan-move-all">
        <source>Move all to today</source>
        <translation>Mover todo a hoy</translation>
    </message>
    <message id="rituals-plan-move-one">
        <source>Move to today</source>
        <translation>Mover a hoy</translation>
    </message>
    <message id="rituals-plan-no-checklist">
        <source>Nothing on today's checklist yet.</source>
        <translation>Aún no hay nada en la lista de hoy.</translation>
    </message>
    <message id="rituals-plan-no-meets">
        <source>No meets today.</source>
        <translation>No hay reuniones hoy.</translation>
    </message>
    <message id="rituals-plan-no-projects">
        <source>No project is shown today.</source>
        <translation>Hoy no se muestra ningún proyecto.</translation>
    </message>
    <message id="rituals-plan-nothing-earlier">
        <source>Nothing left over: every earlier day is done.</source>
        <translation>Nada pendiente: todos los días anteriores están hechos.</translation>
    </message>
    <message id="rituals-plan-projects">
        <source>Projects today</source>
        <translation>Proyectos de hoy</translation>
    </message>
    <message id="rituals-plan-reminder-body">
        <source>Plan your day: what is left from earlier days, today's meets and projects.</source>
        <translation>Planifica tu día: lo pendiente de días anteriores, las reuniones y los proyectos de hoy.</translation>
    </message>
    <message id="rituals-plan-reminder-title">
        <source>Good morning</source>
        <translation>Buenos días</translation>
    </message>
    <message id="rituals-plan-title">
        <source>Plan the day</source>
        <translation>Planificar el día</translation>
    </message>
    <message id="rituals-reminder-open">
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message id="rituals-review-completed">
        <source>Tasks completed</source>
        <translation>Tareas completadas</translation>
    </message>
    <message id="rituals-review-done">
        <source>Done:</source>
        <translation>Hecho:</translation>
    </message>
    <message id="rituals-review-empty-day">
        <source>Nothing on the checklist or the calendar today.</source>
        <translation>Nada en la lista ni en el calendario hoy.</translation>
    </message>
    <message id="rituals-review-heading">
        <source>Review of the day</source>
        <translation>Repaso del día</translation>
    </message>
    <message id="rituals-review-left">
        <source>Left for another day:</source>
        <translation>Pendiente para otro día:</translation>
    </message>
    <message id="rituals-review-meets">
        <source>Meets:</source>
        <translation>Reuniones:</translation>
    </message>
    <message id="rituals-review-none">
        <source>None.</source>
        <translation>Nada.</translation>
    </message>
    <message id="rituals-review-open">
        <source>Still open</source>
        <translation>Aún pendiente</translation>
    </message>
    <message id="rituals-review-projects">
        <source>Add it to the day's entry of:</source>
        <translation>Añadirlo a la entrada del día de:</translation>
    </message>
    <message id="rituals-review-reminder-body">
        <source>Review what the day held and write it to the logbook.</source>
        <translation>Repasa lo que tuvo el día y escríbelo en la bitácora.</translation>
    </message>
    <message id="rituals-review-reminder-title">
        <source>Time to close the day</source>
        <translation>Hora de cerrar el día</translation>
    </message>
    <message id="rituals-review-summary">
        <source>Summary for the logbook (you can edit it)</source>
        <translation>Resumen para la bitácora (puedes editarlo)</translation>
    </message>
    <message id="rituals-review-tasks-completed">
        <source>Tasks completed:</source>
        <translation>Tareas completadas:</translation>
    </message>
    <message id="rituals-review-ticked">
        <source>Ticked today</source>
        <translation>Marcado hoy</translation>
    </message>
    <message id="rituals-review-title">
        <source>Review the day</source>
        <translation>Repasar el día</translation>
    </message>
    <message id="rituals-review-write">
        <source>Write to the logbook</source>
        <translation>Escribir en la bitácora</translation>
    </message>
    <message id="rituals-review-written">
        <source>Added to %1 logbook entries.</source>
        <translation>Añadido a %1 entradas de la bitácora.</translation>
    </message>
    <message id="rituals-settings-auto-move">
        <source>Move unfinished daily tasks of earlier days to today by themselves</source>
        <translation>Mover solas a hoy las tareas diarias sin terminar de días anteriores</translation>
    </message>
    <message id="rituals-settings-no-reminder">
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message id="rituals-settings-plan-at-start">
        <source>Open the morning plan at the first start of a day</source>
        <translation>Abrir el plan de la mañana al iniciar por primera vez cada día</translation>
    </message>
    <message id="rituals-settings-plan-hour">
        <source>Remind me to plan the day at</source>
        <translation>Recordarme planificar el día a las</translation>
    </message>
    <message id="rituals-settings-review-hour">
        <source>Remind me to review the day at</source>
        <translation>Recordarme repasar el día a las</translation>
    </message>
    <message id="rituals-settings-start-at-login">
        <source>Start Tolvane when I log in, in the tray</source>
        <translation>Iniciar Tolvane al entrar en la sesión, en la bandeja</translation>
    </message>
    <message id="rituals-settings-start-at-login-failed">
        <source>The login start could not be changed: %1</source>
        <translation>No se pudo cambiar el inicio con la sesión: %1</translation>
    </message>
    <message id="rituals-settings-start-at-login-hint">
        <source>Alarms and reminders ring only while Tolvane runs. With this on, Tolvane starts hidden in the tray when you log in, and opens when you click it. It is turned on by itself when you arm your first alarm; turn it off here if you would rather start Tolvane yourself.</source>
        <translation>Las alarmas y los recordatorios solo suenan mientras Tolvane está en marcha. Con esto activado, Tolvane se inicia oculto en la bandeja al entrar en la sesión y se abre al hacer clic en él. Se activa solo al armar tu primera alarma; desactívalo aquí si prefieres iniciar Tolvane tú mismo.</translation>
    </message>
    <message id="schedule-block-time-action">
        <source>Block time for this task</source>
        <translation>Reservar tiempo para esta tarea</translation>
    </message>
    <message id="schedule-block-time-no-room">
        <source>There is no free half hour left on this day</source>
        <translation>No queda media hora libre en este día</translation>
    </message>
    <message id="schedule-block-time-task-unreadable">
        <source>The task could not be read</source>
        <translation>No se pudo leer la tarea</translation>
    </message>
    <message id="schedule-login-required-state">
        <source>Set up your account to start.</source>
        <translation>Configura tu cuenta para empezar.</translation>
    </message>
    <message id="schedule-notice-deleted">
        <source>Event deleted</source>
        <translation>Evento eliminado</translation>
    </message>
    <message id="schedule-notice-moved">
        <source>Event moved</source>
        <translation>Evento movido</translation>
    </message>
    <message id="schedule-notice-resized">
        <source>Event length changed</source>
        <translation>Duración del evento cambiada</translation>
    </message>
    <message id="schedule-notice-time-blocked">
        <source>Time blocked for the task</source>
        <translation>Tiempo reservado para la tarea</translation>
    </message>
    <message id="schedule-projects-no-default-list-text">
        <source>This project has no default list.</source>
        <translation>Este proyecto no tiene lista predeterminada.</translation>
    </message>
    <message id="schedule-projects-panel-title">
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message id="schedule-task-failed-title">
        <source>The task was not changed</source>
        <translation>La tarea no se cambió</translation>
    </message>
    <message id="schedule-undo-button">
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message id="search-group-daily-tasks">
        <source>Daily tasks</source>
        <translation>Tareas del día</translation>
    </message>
    <message id="search-group-lists">
        <source>Lists</source>
        <translation>Listas</translation>
    </message>
    <message id="search-group-logbook">
        <source>Logbook</source>
        <translation>Bitácora</translation>
    </message>
    <message id="search-group-meets">
        <source>Meets</source>
        <translation>Reuniones</translation>
    </message>
    <message id="search-group-projects">
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message id="search-group-tasks">
        <source>Tasks</source>
        <translation>Tareas</translation>
    </message>
    <message id="search-hint">
        <source>Type to search</source>
        <translation>Escribe para buscar</translation>
    </message>
    <message id="search-loading">
        <source>Loading…</source>
        <translation>Cargando…</translation>
    </message>
    <message id="search-nothing-found">
        <source>Nothing found</source>
        <translation>No se encontró nada</translation>
    </message>
    <message id="search-placeholder">
        <source>Search projects, tasks, logbook, meets…</source>
        <translation>Busca proyectos, tareas, bitácora, reuniones…</translation>
    </message>
    <message id="sidebar-agenda-link">
        <source>Schedule</source>
        <translation>Agenda</translation>
    </message>
    <message id="sidebar-bitacora-link">
        <source>Logbook</source>
        <translation>Bitácora</translation>
    </message>
    <message id="sidebar-menu-title">
        <source>Tolvane</source>
        <translation>Tolvane</translation>
    </message>
    <message id="sidebar-projects-link">
        <source>Projects</source>
        <translation>Proyectos</translation>
    </message>
    <message id="store-migration-progress">
        <source>Updating your data…</source>
        <translation>Actualizando tus datos…</translation>
    </message>
    <message id="task-list-view-mode-detail">
        <source>Matrix</source>
        <translation>Matriz</translation>
    </message>
    <message id="task-list-view-mode-tasks">
        <source>Tasks</source>
        <translation>Tareas</translation>
    </message>
    <message id="task-lists-add-button">
        <source>Add list</source>
        <translation>Añadir listado</translation>
    </message>
    <message id="task-lists-default-badge">
        <source>Default</source>
        <translation>Predeterminado</translation>
    </message>
    <message id="task-lists-delete-button">
        <source>Delete list</source>
        <translation>Eliminar listado</translation>
    </message>
    <message id="task-lists-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="task-lists-delete-confirm-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="task-lists-delete-confirmation-title">
        <source>Delete this list and its tasks?</source>
        <translation>¿Eliminar este listado y sus tareas?</translation>
    </message>
    <message id="task-lists-rename-button">
        <source>Rename</source>
        <translation>Renombrar</translation>
    </message>
    <message id="task-lists-set-default-button">
        <source>Make default</source>
        <translation>Hacer predeterminado</translation>
    </message>
    <message id="task-reminder-done-action">
        <source>Done</source>
        <translation>Hecha</translation>
    </message>
    <message id="task-reminder-due">
        <source>Due %1</source>
        <translation>Vence %1</translation>
    </message>
    <message id="task-reminder-snooze-action">
        <source>Snooze %1 min</source>
        <translation>Posponer %1 min</translation>
    </message>
    <message id="tasks-add-button">
        <source>Add task</source>
        <translation>Añadir tarea</translation>
    </message>
    <message id="tasks-day-view-overdue-count">
        <source>%1 overdue</source>
        <translation>%1 vencidas</translation>
    </message>
    <message id="tasks-day-view-today">
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message id="tasks-day-view-today-empty">
        <source>Nothing due today.</source>
        <translation>Nada vence hoy.</translation>
    </message>
    <message id="tasks-day-view-tomorrow">
        <source>Tomorrow</source>
        <translation>Mañana</translation>
    </message>
    <message id="tasks-day-view-upcoming">
        <source>Upcoming</source>
        <translation>Próximos días</translation>
    </message>
    <message id="tasks-day-view-upcoming-empty">
        <source>Nothing due in the next seven days.</source>
        <translation>Nada vence en los próximos siete días.</translation>
    </message>
    <message id="tasks-delete-button">
        <source>Delete task</source>
        <translation>Eliminar tarea</translation>
    </message>
    <message id="tasks-delete-completed-button">
        <source>Delete completed</source>
        <translation>Eliminar completadas</translation>
    </message>
    <message id="tasks-delete-completed-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="tasks-delete-completed-confirm-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="tasks-delete-completed-confirmation-title">
        <source>Delete %1 completed tasks?</source>
        <translation>¿Eliminar %1 tareas completadas?</translation>
    </message>
    <message id="tasks-delete-completed-confirmation-title-one">
        <source>Delete the completed task?</source>
        <translation>¿Eliminar la tarea completada?</translation>
    </message>
    <message id="tasks-delete-completed-error-title">
        <source>The completed tasks could not be deleted</source>
        <translation>No se pudieron eliminar las tareas completadas</translation>
    </message>
    <message id="tasks-due-days-ago">
        <source>%1 days ago</source>
        <translation>hace %1 días</translation>
    </message>
    <message id="tasks-due-in-days">
        <source>in %1 days</source>
        <translation>en %1 días</translation>
    </message>
    <message id="tasks-due-overdue">
        <source>Overdue</source>
        <translation>Vencida</translation>
    </message>
    <message id="tasks-due-today">
        <source>today</source>
        <translation>hoy</translation>
    </message>
    <message id="tasks-due-tomorrow">
        <source>tomorrow</source>
        <translation>mañana</translation>
    </message>
    <message id="tasks-due-yesterday">
        <source>yesterday</source>
        <translation>ayer</translation>
    </message>
    <message id="tasks-empty-state">
        <source>No tasks yet.</source>
        <translation>Aún no hay tareas.</translation>
    </message>
    <message id="tasks-repeats">
        <source>Repeats</source>
        <translation>Se repite</translation>
    </message>
    <message id="tasks-schedule-at-time">
        <source>At</source>
        <translation>A las</translation>
    </message>
    <message id="tasks-schedule-button">
        <source>Due date, repetition and reminder (Ctrl+E)</source>
        <translation>Vencimiento, repetición y recordatorio (Ctrl+E)</translation>
    </message>
    <message id="tasks-schedule-due">
        <source>Due</source>
        <translation>Vence</translation>
    </message>
    <message id="tasks-schedule-end-count">
        <source>A number of times</source>
        <translation>Un número de veces</translation>
    </message>
    <message id="tasks-schedule-end-date">
        <source>Until a date</source>
        <translation>Hasta una fecha</translation>
    </message>
    <message id="tasks-schedule-end-never">
        <source>Forever</source>
        <translation>Siempre</translation>
    </message>
    <message id="tasks-schedule-ends">
        <source>Ends</source>
        <translation>Termina</translation>
    </message>
    <message id="tasks-schedule-from-completion">
        <source>Count from when it is done</source>
        <translation>Contar desde que se completa</translation>
    </message>
    <message id="tasks-schedule-interval-prefix">
        <source>N =</source>
        <translation>N =</translation>
    </message>
    <message id="tasks-schedule-monthly-last-day">
        <source>On the last day</source>
        <translation>El último día</translation>
    </message>
    <message id="tasks-schedule-monthly-same-day">
        <source>On the same day</source>
        <translation>El mismo día</translation>
    </message>
    <message id="tasks-schedule-monthly-same-weekday">
        <source>On the same weekday (e.g. last Friday)</source>
        <translation>El mismo día de la semana (p. ej. último viernes)</translation>
    </message>
    <message id="tasks-schedule-reminder">
        <source>Remind me</source>
        <translation>Recordarme</translation>
    </message>
    <message id="tasks-schedule-reminder-at-time">
        <source>At the due time</source>
        <translation>A la hora de vencimiento</translation>
    </message>
    <message id="tasks-schedule-reminder-day">
        <source>1 day before</source>
        <translation>1 día antes</translation>
    </message>
    <message id="tasks-schedule-reminder-day-only">
        <source>Without a time, the reminder counts from %1 that day.</source>
        <translation>Sin hora, el recordatorio cuenta desde las %1 de ese día.</translation>
    </message>
    <message id="tasks-schedule-reminder-hours">
        <source>%1 h before</source>
        <translation>%1 h antes</translation>
    </message>
    <message id="tasks-schedule-reminder-minutes">
        <source>%1 min before</source>
        <translation>%1 min antes</translation>
    </message>
    <message id="tasks-schedule-reminder-none">
        <source>No reminder</source>
        <translation>Sin recordatorio</translation>
    </message>
    <message id="tasks-schedule-repeat">
        <source>Repeat</source>
        <translation>Repetir</translation>
    </message>
    <message id="tasks-schedule-repeat-daily">
        <source>Every N days</source>
        <translation>Cada N días</translation>
    </message>
    <message id="tasks-schedule-repeat-monthly">
        <source>Every N months</source>
        <translation>Cada N meses</translation>
    </message>
    <message id="tasks-schedule-repeat-never">
        <source>Does not repeat</source>
        <translation>No se repite</translation>
    </message>
    <message id="tasks-schedule-repeat-weekly">
        <source>Every N weeks</source>
        <translation>Cada N semanas</translation>
    </message>
    <message id="tasks-schedule-repeat-yearly">
        <source>Every N years</source>
        <translation>Cada N años</translation>
    </message>
    <message id="tasks-schedule-save">
        <source>Save</source>
        <translation>Guardar</translation>
    </message>
    <message id="tasks-schedule-skip">
        <source>Skip this time</source>
        <translation>Saltar esta vez</translation>
    </message>
    <message id="tasks-select-list-placeholder">
        <source>Choose a list or a project</source>
        <translation>Elige un listado o un proyecto</translation>
    </message>
    <message id="tasks-status-completed">
        <source>Completed</source>
        <translation>Completadas</translation>
    </message>
    <message id="undo-action">
        <source>%1 %2 '%3'</source>
        <translation>%1 %2 '%3'</translation>
    </message>
    <message id="undo-changed-elsewhere">
        <source>Can't undo %1: it was changed elsewhere since. Nothing was changed.</source>
        <translation>No se puede deshacer %1: se cambió en otro lugar desde entonces. No se ha cambiado nada.</translation>
    </message>
    <message id="undo-delete-completed">
        <source>delete completed tasks (%1)</source>
        <translation>eliminar tareas completadas (%1)</translation>
    </message>
    <message id="undo-failed">
        <source>Could not finish: %1</source>
        <translation>No se pudo terminar: %1</translation>
    </message>
    <message id="undo-menu-redo">
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message id="undo-menu-redo-action">
        <source>Redo %1</source>
        <translation>Rehacer %1</translation>
    </message>
    <message id="undo-menu-undo">
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message id="undo-menu-undo-action">
        <source>Undo %1</source>
        <translation>Deshacer %1</translation>
    </message>
    <message id="undo-notice-deleted">
        <source>Deleted %1 '%2'</source>
        <translation>Eliminado: %1 '%2'</translation>
    </message>
    <message id="undo-notice-deleted-completed">
        <source>Deleted completed tasks (%1)</source>
        <translation>Eliminadas las tareas completadas (%1)</translation>
    </message>
    <message id="undo-notice-undo">
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message id="undo-noun-bitacora-entry">
        <source>logbook entry</source>
        <translation>entrada de la bitácora</translation>
    </message>
    <message id="undo-noun-daily-task">
        <source>daily task</source>
        <translation>tarea del día</translation>
    </message>
    <message id="undo-noun-event">
        <source>event</source>
        <translation>evento</translation>
    </message>
    <message id="undo-noun-project">
        <source>project</source>
        <translation>proyecto</translation>
    </message>
    <message id="undo-noun-task">
        <source>task</source>
        <translation>tarea</translation>
    </message>
    <message id="undo-noun-task-list">
        <source>list</source>
        <translation>lista</translation>
    </message>
    <message id="undo-verb-add">
        <source>add</source>
        <translation>añadir</translation>
    </message>
    <message id="undo-verb-complete">
        <source>complete</source>
        <translation>completar</translation>
    </message>
    <message id="undo-verb-delete">
        <source>delete</source>
        <translation>eliminar</translation>
    </message>
    <message id="undo-verb-edit">
        <source>edit</source>
        <translation>editar</translation>
    </message>
    <message id="undo-verb-move">
        <source>move</source>
        <translation>mover</translation>
    </message>
    <message id="undo-verb-reopen">
        <source>reopen</source>
        <translation>reabrir</translation>
    </message>
    <message id="undo-verb-set-default">
        <source>make default</source>
        <translation>hacer predeterminada</translation>
    </message>
    <message id="undo-verb-set-tag">
        <source>change quadrant of</source>
        <translation>cambiar el cuadrante de</translation>
    </message>
    <message id="user-settings-account-section-title">
        <source>My account</source>
        <translation>Mi cuenta</translation>
    </message>
    <message id="user-settings-accounts-section-title">
        <source>Calendar accounts</source>
        <translation>Cuentas de calendario</translation>
    </message>
    <message id="user-settings-alarm-section-title">
        <source>Alarms</source>
        <translation>Alarmas</translation>
    </message>
    <message id="user-settings-appearance-dark">
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message id="user-settings-appearance-label">
        <source>Appearance</source>
        <translation>Apariencia</translation>
    </message>
    <message id="user-settings-appearance-light">
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message id="user-settings-appearance-system">
        <source>As the desktop</source>
        <translation>Como el escritorio</translation>
    </message>
    <message id="user-settings-back-to-chooser-button">
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message id="user-settings-calendars-activate-column">
        <source>Show</source>
        <translation>Mostrar</translation>
    </message>
    <message id="user-settings-calendars-alarm-column">
        <source>Alarms</source>
        <translation>Alarmas</translation>
    </message>
    <message id="user-settings-calendars-default-calendar-automatic">
        <source>The calendar store's default</source>
        <translation>El predeterminado del calendario</translation>
    </message>
    <message id="user-settings-calendars-default-calendar-title">
        <source>Calendar for new meets</source>
        <translation>Calendario para reuniones nuevas</translation>
    </message>
    <message id="user-settings-calendars-empty-state">
        <source>No calendars yet. Calendars of the accounts you set up on this computer show up here.</source>
        <translation>Aún no hay calendarios. Aquí aparecen los calendarios de las cuentas que configures en este ordenador.</translation>
    </message>
    <message id="user-settings-calendars-section-title">
        <source>Calendars</source>
        <translation>Calendarios</translation>
    </message>
    <message id="user-settings-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="user-settings-close-button">
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message id="user-settings-data-section-title">
        <source>Backups and export</source>
        <translation>Copias y exportación</translation>
    </message>
    <message id="user-settings-delete-local-account-button">
        <source>Delete local account</source>
        <translation>Eliminar cuenta local</translation>
    </message>
    <message id="user-settings-delete-local-account-confirm-button">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="user-settings-delete-local-account-confirmation-message">
        <source>Tolvane forgets this account. A new local account starts with no projects.</source>
        <translation>Tolvane olvidará esta cuenta. Una cuenta local nueva empieza sin proyectos.</translation>
    </message>
    <message id="user-settings-delete-local-account-confirmation-title">
        <source>Delete the local account?</source>
        <translation>¿Eliminar la cuenta local?</translation>
    </message>
    <message id="user-settings-email-field">
        <source>E-mail</source>
        <translation>Correo electrónico</translation>
    </message>
    <message id="user-settings-email-invalid-text">
        <source>Enter an e-mail address like name@example.com, or leave it empty.</source>
        <translation>Escribe una dirección de correo como nombre@ejemplo.com, o déjala vacía.</translation>
    </message>
    <message id="user-settings-first-name-field">
        <source>First name</source>
        <translation>Nombre</translation>
    </message>
    <message id="user-settings-google-account-text">
        <source>Signed in with Google</source>
        <translation>Sesión iniciada con Google</translation>
    </message>
    <message id="user-settings-google-sign-in-button">
        <source>Sign in with Google</source>
        <translation>Iniciar sesión con Google</translation>
    </message>
    <message id="user-settings-google-sign-in-error-text">
        <source>Google sign-in did not work. Please try again.</source>
        <translation>No se pudo iniciar sesión con Google. Inténtalo de nuevo.</translation>
    </message>
    <message id="user-settings-help-message-field">
        <source>Tell us what happened or what you need</source>
        <translation>Cuéntanos qué pasó o qué necesitas</translation>
    </message>
    <message id="user-settings-help-section-title">
        <source>Help</source>
        <translation>Ayuda</translation>
    </message>
    <message id="user-settings-help-send-button">
        <source>Send</source>
        <translation>Enviar</translation>
    </message>
    <message id="user-settings-help-send-failed-text">
        <source>The message could not be sent. It is kept here; try again later.</source>
        <translation>No se pudo enviar el mensaje. Se conserva aquí; inténtalo más tarde.</translation>
    </message>
    <message id="user-settings-help-sent-button">
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message id="user-settings-help-sent-message">
        <source>Thank you. We will answer you by e-mail.</source>
        <translation>Gracias. Te responderemos por correo electrónico.</translation>
    </message>
    <message id="user-settings-help-sent-title">
        <source>Message sent</source>
        <translation>Mensaje enviado</translation>
    </message>
    <message id="user-settings-help-unavailable-text">
        <source>This copy of Tolvane has no support service or support address set up, so messages cannot be sent from here. The console below keeps what went wrong, for you to pass on.</source>
        <translation>Esta copia de Tolvane no tiene configurado un servicio ni una dirección de soporte, así que no se pueden enviar mensajes desde aquí. La consola de abajo guarda lo que falló, para que lo compartas.</translation>
    </message>
    <message id="user-settings-hours-end-label">
        <source>Day ends at</source>
        <translation>El día termina a las</translation>
    </message>
    <message id="user-settings-hours-hint">
        <source>The schedule shows the hours from the first to the last; meets outside them still appear at the edges.</source>
        <translation>La agenda muestra las horas de la primera a la última; las reuniones fuera de ellas siguen apareciendo en los bordes.</translation>
    </message>
    <message id="user-settings-hours-section-title">
        <source>Schedule hours</source>
        <translation>Horario de la agenda</translation>
    </message>
    <message id="user-settings-hours-start-label">
        <source>Day starts at</source>
        <translation>El día empieza a las</translation>
    </message>
    <message id="user-settings-last-name-field">
        <source>Last name</source>
        <translation>Apellido</translation>
    </message>
    <message id="user-settings-local-account-text">
        <source>Local account: your data stays encrypted on this computer</source>
        <translation>Cuenta local: tus datos se guardan cifrados en este ordenador</translation>
    </message>
    <message id="user-settings-logout-button">
        <source>Sign out</source>
        <translation>Cerrar sesión</translation>
    </message>
    <message id="user-settings-logout-cancel-button">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="user-settings-logout-confirm-button">
        <source>Sign out</source>
        <translation>Cerrar sesión</translation>
    </message>
    <message id="user-settings-logout-confirmation-message">
        <source>Your projects stay on the server; sign in again to see them.</source>
        <translation>Tus proyectos se quedan en el servidor; inicia sesión de nuevo para verlos.</translation>
    </message>
    <message id="user-settings-logout-confirmation-title">
        <source>Sign out of Tolvane?</source>
        <translation>¿Cerrar sesión en Tolvane?</translation>
    </message>
    <message id="user-settings-save-button">
        <source>Save</source>
        <translation>Guardar</translation>
    </message>
    <message id="user-settings-screen-title">
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message id="user-settings-setup-chooser-title">
        <source>Set up your account</source>
        <translation>Configura tu cuenta</translation>
    </message>
    <message id="user-settings-setup-local-button">
        <source>Use Tolvane on this computer</source>
        <translation>Usar Tolvane en este ordenador</translation>
    </message>
</context>
</TS>
