<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="account-copy-again-hint">
        <source>What was copied stays; copying again adds the rest.</source>
        <translation>What was copied stays; copying again adds the rest.</translation>
    </message>
    <message id="account-copy-button">
        <source>Copy to this computer</source>
        <translation>Copy to this computer</translation>
    </message>
    <message id="account-copy-copying">
        <source>Copying to this computer…</source>
        <translation>Copying to this computer…</translation>
    </message>
    <message id="account-copy-done">
        <source>A copy of %1 items is on this computer and was checked. Copying again adds what is new.</source>
        <translation>A copy of %1 items is on this computer and was checked. Copying again adds what is new.</translation>
    </message>
    <message id="account-copy-explanation">
        <source>Copies this account's projects, lists, tasks, logbook and the daily tasks of the last two years to this computer, encrypted. A local account set up here later starts with them.</source>
        <translation>Copies this account's projects, lists, tasks, logbook and the daily tasks of the last two years to this computer, encrypted. A local account set up here later starts with them.</translation>
    </message>
    <message id="account-copy-title">
        <source>Keep a copy on this computer</source>
        <translation>Keep a copy on this computer</translation>
    </message>
    <message id="account-move-button">
        <source>Move to a Google account…</source>
        <translation>Move to a Google account…</translation>
    </message>
    <message id="account-move-confirm-button">
        <source>Sign in and copy</source>
        <translation>Sign in and copy</translation>
    </message>
    <message id="account-move-confirmation-title">
        <source>Copy everything to a Google account?</source>
        <translation>Copy everything to a Google account?</translation>
    </message>
    <message id="account-move-copying">
        <source>Copying to your Google account…</source>
        <translation>Copying to your Google account…</translation>
    </message>
    <message id="account-move-differs">
        <source>Records did not arrive as they were sent (%1 of them, among them “%2”). Nothing was deleted; try again.</source>
        <translation>Records did not arrive as they were sent (%1 of them, among them “%2”). Nothing was deleted; try again.</translation>
    </message>
    <message id="account-move-done">
        <source>Everything is on your Google account and was checked there: %1 items, %2 of them already there before. This computer keeps its copy.</source>
        <translation>Everything is on your Google account and was checked there: %1 items, %2 of them already there before. This computer keeps its copy.</translation>
    </message>
    <message id="account-move-explanation">
        <source>Sign in with Google and copy your projects, lists, tasks, daily tasks and logbook there. This computer keeps its copy.</source>
        <translation>Sign in with Google and copy your projects, lists, tasks, daily tasks and logbook there. This computer keeps its copy.</translation>
    </message>
    <message id="account-move-finish-button">
        <source>Finish moving</source>
        <translation>Finish moving</translation>
    </message>
    <message id="account-move-finish-hint">
        <source>What was copied stays; “Finish moving” copies the rest.</source>
        <translation>What was copied stays; “Finish moving” copies the rest.</translation>
    </message>
    <message id="account-move-sign-in-failed">
        <source>Google sign-in did not work, so nothing was copied: %1</source>
        <translation>Google sign-in did not work, so nothing was copied: %1</translation>
    </message>
    <message id="account-move-signing-in">
        <source>Signing in with Google…</source>
        <translation>Signing in with Google…</translation>
    </message>
    <message id="account-move-stopped">
        <source>Stopped.</source>
        <translation>Stopped.</translation>
    </message>
    <message id="account-move-title">
        <source>Move to a Google account</source>
        <translation>Move to a Google account</translation>
    </message>
    <message id="account-move-unfinished">
        <source>The data of your local account is not all on this Google account yet. Nothing was lost: finishing copies what is missing.</source>
        <translation>The data of your local account is not all on this Google account yet. Nothing was lost: finishing copies what is missing.</translation>
    </message>
    <message id="accounts-add-button">
        <source>Add account</source>
        <translation>Add account</translation>
    </message>
    <message id="accounts-delete-button">
        <source>Remove account</source>
        <translation>Remove account</translation>
    </message>
    <message id="accounts-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="accounts-delete-confirm-button">
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
    <message id="accounts-delete-confirmation-title">
        <source>Remove this account?</source>
        <translation>Remove this account?</translation>
    </message>
    <message id="accounts-email-field">
        <source>E-mail</source>
        <translation>E-mail</translation>
    </message>
    <message id="accounts-empty-state-text">
        <source>No calendar accounts added yet. The schedule shows the calendars of this computer; add an account here to turn its calendars on or off.</source>
        <translation>No calendar accounts added yet. The schedule shows the calendars of this computer; add an account here to turn its calendars on or off.</translation>
    </message>
    <message id="accounts-enable-toggle">
        <source>Use this account's calendars</source>
        <translation>Use this account's calendars</translation>
    </message>
    <message id="accounts-permission-denied-message">
        <source>The desktop's calendar service did not answer. Check that your calendar accounts are set up and that the service is running.</source>
        <translation>The desktop's calendar service did not answer. Check that your calendar accounts are set up and that the service is running.</translation>
    </message>
    <message id="accounts-permission-denied-open-settings-button">
        <source>Open settings</source>
        <translation>Open settings</translation>
    </message>
    <message id="accounts-permission-denied-title">
        <source>Tolvane cannot read your calendars</source>
        <translation>Tolvane cannot read your calendars</translation>
    </message>
    <message id="accounts-provider-eventkit-name">
        <source>Calendars of this computer</source>
        <translation>Calendars of this computer</translation>
    </message>
    <message id="accounts-provider-picker-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="accounts-provider-picker-continue-button">
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message id="accounts-provider-picker-title">
        <source>Add a calendar account</source>
        <translation>Add a calendar account</translation>
    </message>
    <message id="accounts-select-account-text">
        <source>Choose an account to see its details.</source>
        <translation>Choose an account to see its details.</translation>
    </message>
    <message id="alarm-close-minimise-button">
        <source>Keep running</source>
        <translation>Keep running</translation>
    </message>
    <message id="alarm-close-quit-button">
        <source>Quit anyway</source>
        <translation>Quit anyway</translation>
    </message>
    <message id="alarm-close-without-tray-text">
        <source>Tolvane stays open, minimised, so that they ring. If you quit, no alarm rings until you open Tolvane again.</source>
        <translation>Tolvane stays open, minimised, so that they ring. If you quit, no alarm rings until you open Tolvane again.</translation>
    </message>
    <message id="alarm-close-without-tray-title">
        <source>Alarms are pending, and this desktop has no tray to keep Tolvane in.</source>
        <translation>Alarms are pending, and this desktop has no tray to keep Tolvane in.</translation>
    </message>
    <message id="alarm-tray-quit">
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message id="alarm-tray-show">
        <source>Show Tolvane</source>
        <translation>Show Tolvane</translation>
    </message>
    <message id="alarm-tray-tooltip">
        <source>Tolvane: alarms pending</source>
        <translation>Tolvane: alarms pending</translation>
    </message>
    <message id="alarm-tray-tooltip-background">
        <source>Tolvane</source>
        <translation>Tolvane</translation>
    </message>
    <message id="app-command-line-description">
        <source>Plan your day: schedule, projects and a daily logbook.</source>
        <translation>Plan your day: schedule, projects and a daily logbook.</translation>
    </message>
    <message id="app-option-background">
        <source>Start without a window, in the system tray, so that alarms ring.</source>
        <translation>Start without a window, in the system tray, so that alarms ring.</translation>
    </message>
    <message id="app-option-bad-date">
        <source>Not a day: “%1”. Write it as YYYY-MM-DD, for example 2026-12-01.</source>
        <translation>Not a day: “%1”. Write it as YYYY-MM-DD, for example 2026-12-01.</translation>
    </message>
    <message id="app-option-date">
        <source>Open the schedule on this day (YYYY-MM-DD).</source>
        <translation>Open the schedule on this day (YYYY-MM-DD).</translation>
    </message>
    <message id="app-option-empty-quick-add">
        <source>--quick-add needs the text of the task.</source>
        <translation>--quick-add needs the text of the task.</translation>
    </message>
    <message id="app-option-quick-add">
        <source>Add a task typed in one line, such as "Pay rent tomorrow #Home".</source>
        <translation>Add a task typed in one line, such as "Pay rent tomorrow #Home".</translation>
    </message>
    <message id="app-option-try-help">
        <source>Try “tolvane --help” for the options.</source>
        <translation>Try “tolvane --help” for the options.</translation>
    </message>
    <message id="app-option-unexpected-argument">
        <source>Unexpected argument: %1</source>
        <translation>Unexpected argument: %1</translation>
    </message>
    <message id="bitacora-choose-day-button">
        <source>Choose a day</source>
        <translation>Choose a day</translation>
    </message>
    <message id="bitacora-delete-button">
        <source>Delete this day's entry</source>
        <translation>Delete this day's entry</translation>
    </message>
    <message id="bitacora-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="bitacora-delete-confirm-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="bitacora-delete-confirmation-title">
        <source>Delete this day's entry?</source>
        <translation>Delete this day's entry?</translation>
    </message>
    <message id="bitacora-deleting-state">
        <source>Deleting…</source>
        <translation>Deleting…</translation>
    </message>
    <message id="bitacora-entry-placeholder">
        <source>Write what happened in this project today</source>
        <translation>Write what happened in this project today</translation>
    </message>
    <message id="bitacora-next-day-button">
        <source>Next day</source>
        <translation>Next day</translation>
    </message>
    <message id="bitacora-no-projects-state">
        <source>Create a project in the projects workspace to start its logbook.</source>
        <translation>Create a project in the projects workspace to start its logbook.</translation>
    </message>
    <message id="bitacora-previous-day-button">
        <source>Previous day</source>
        <translation>Previous day</translation>
    </message>
    <message id="bitacora-unsaved-entry-keeps-day">
        <source>The entry of “%1” could not be saved yet, so this day stays open. Tolvane keeps trying.</source>
        <translation>The entry of “%1” could not be saved yet, so this day stays open. Tolvane keeps trying.</translation>
    </message>
    <message id="create-event-all-day-toggle">
        <source>All day</source>
        <translation>All day</translation>
    </message>
    <message id="create-event-calendar-label">
        <source>Calendar</source>
        <translation>Calendar</translation>
    </message>
    <message id="create-event-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="create-event-deleted-elsewhere">
        <source>This event was deleted in another program. What you typed is kept; copy it before closing.</source>
        <translation>This event was deleted in another program. What you typed is kept; copy it before closing.</translation>
    </message>
    <message id="create-event-description-label">
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message id="create-event-description-placeholder">
        <source>Add a description</source>
        <translation>Add a description</translation>
    </message>
    <message id="create-event-duration-caption-format">
        <source>Lasts %1 h %2 min</source>
        <translation>Lasts %1 h %2 min</translation>
    </message>
    <message id="create-event-end-before-start-error">
        <source>The event cannot end before it starts.</source>
        <translation>The event cannot end before it starts.</translation>
    </message>
    <message id="create-event-end-label">
        <source>Ends</source>
        <translation>Ends</translation>
    </message>
    <message id="create-event-generic-error">
        <source>The event could not be saved.</source>
        <translation>The event could not be saved.</translation>
    </message>
    <message id="create-event-link-invalid-error">
        <source>The link is not a web address.</source>
        <translation>The link is not a web address.</translation>
    </message>
    <message id="create-event-link-label">
        <source>Link</source>
        <translation>Link</translation>
    </message>
    <message id="create-event-location-label">
        <source>Location</source>
        <translation>Location</translation>
    </message>
    <message id="create-event-location-placeholder">
        <source>Add a place</source>
        <translation>Add a place</translation>
    </message>
    <message id="create-event-repeat-all-days">
        <source>Repeats every day</source>
        <translation>Repeats every day</translation>
    </message>
    <message id="create-event-repeat-every-day-format">
        <source>Repeats every %1</source>
        <translation>Repeats every %1</translation>
    </message>
    <message id="create-event-repeat-label">
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message id="create-event-repeat-list-conjunction">
        <source>and</source>
        <translation>and</translation>
    </message>
    <message id="create-event-repeat-monthly">
        <source>Repeats every month</source>
        <translation>Repeats every month</translation>
    </message>
    <message id="create-event-repeat-option-day">
        <source>Every day</source>
        <translation>Every day</translation>
    </message>
    <message id="create-event-repeat-option-month">
        <source>Every month</source>
        <translation>Every month</translation>
    </message>
    <message id="create-event-repeat-option-never">
        <source>Never</source>
        <translation>Never</translation>
    </message>
    <message id="create-event-repeat-option-week">
        <source>Every week</source>
        <translation>Every week</translation>
    </message>
    <message id="create-event-repeat-select-day-hint">
        <source>Choose the days it repeats on</source>
        <translation>Choose the days it repeats on</translation>
    </message>
    <message id="create-event-repeat-weekdays">
        <source>Repeats on weekdays</source>
        <translation>Repeats on weekdays</translation>
    </message>
    <message id="create-event-repeat-weekend">
        <source>Repeats on weekends</source>
        <translation>Repeats on weekends</translation>
    </message>
    <message id="create-event-save-button">
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message id="create-event-sheet-title">
        <source>New event</source>
        <translation>New event</translation>
    </message>
    <message id="create-event-sheet-title-edit">
        <source>Edit event</source>
        <translation>Edit event</translation>
    </message>
    <message id="create-event-start-label">
        <source>Starts</source>
        <translation>Starts</translation>
    </message>
    <message id="create-event-title-placeholder">
        <source>Title</source>
        <translation>Title</translation>
    </message>
    <message id="create-event-title-required-error">
        <source>Give the event a title.</source>
        <translation>Give the event a title.</translation>
    </message>
    <message id="create-event-whole-series-note">
        <source>This event repeats: the change applies to every occurrence.</source>
        <translation>This event repeats: the change applies to every occurrence.</translation>
    </message>
    <message id="daily-events-all-day-empty-state-text">
        <source>No all-day events</source>
        <translation>No all-day events</translation>
    </message>
    <message id="daily-events-all-day-section-title">
        <source>All day</source>
        <translation>All day</translation>
    </message>
    <message id="daily-events-end-hour-label">
        <source>to</source>
        <translation>to</translation>
    </message>
    <message id="daily-events-permission-denied-message">
        <source>Tolvane cannot read your calendars. Check that the desktop's calendar service is running and try again.</source>
        <translation>Tolvane cannot read your calendars. Check that the desktop's calendar service is running and try again.</translation>
    </message>
    <message id="daily-events-permission-denied-title">
        <source>No access to your calendars</source>
        <translation>No access to your calendars</translation>
    </message>
    <message id="daily-events-start-hour-label">
        <source>Hours from</source>
        <translation>Hours from</translation>
    </message>
    <message id="daily-events-today-button">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="daily-task-add-button">
        <source>Add a task for the day</source>
        <translation>Add a task for the day</translation>
    </message>
    <message id="daily-task-empty-state">
        <source>Nothing planned for this day</source>
        <translation>Nothing planned for this day</translation>
    </message>
    <message id="daily-task-title-plural">
        <source>Tasks of the day</source>
        <translation>Tasks of the day</translation>
    </message>
    <message id="daily-task-title-singular">
        <source>Task of the day</source>
        <translation>Task of the day</translation>
    </message>
    <message id="data-settings-backup-date">
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message id="data-settings-backup-done">
        <source>Backed up.</source>
        <translation>Backed up.</translation>
    </message>
    <message id="data-settings-backup-items">
        <source>Items</source>
        <translation>Items</translation>
    </message>
    <message id="data-settings-backup-kind">
        <source>Kind</source>
        <translation>Kind</translation>
    </message>
    <message id="data-settings-backup-no-keys">
        <source>The keyring could not be read; no backup was made.</source>
        <translation>The keyring could not be read; no backup was made.</translation>
    </message>
    <message id="data-settings-backup-now">
        <source>Back up now</source>
        <translation>Back up now</translation>
    </message>
    <message id="data-settings-backup-reason-daily">
        <source>Daily</source>
        <translation>Daily</translation>
    </message>
    <message id="data-settings-backup-reason-migration">
        <source>Before an update</source>
        <translation>Before an update</translation>
    </message>
    <message id="data-settings-backup-reason-restore">
        <source>Before a restore</source>
        <translation>Before a restore</translation>
    </message>
    <message id="data-settings-backups-hint">
        <source>Tolvane keeps an encrypted copy of its local data every day: the last 7 days and 4 weeks.</source>
        <translation>Tolvane keeps an encrypted copy of its local data every day: the last 7 days and 4 weeks.</translation>
    </message>
    <message id="data-settings-backups-title">
        <source>Backups</source>
        <translation>Backups</translation>
    </message>
    <message id="data-settings-cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="data-settings-csv-done-column">
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message id="data-settings-csv-due-column">
        <source>Due date</source>
        <translation>Due date</translation>
    </message>
    <message id="data-settings-csv-empty">
        <source>The file holds no rows.</source>
        <translation>The file holds no rows.</translation>
    </message>
    <message id="data-settings-csv-import-done">
        <source>Imported %1 tasks; %2 rows without a title were left out.</source>
        <translation>Imported %1 tasks; %2 rows without a title were left out.</translation>
    </message>
    <message id="data-settings-csv-mapping-title">
        <source>Import tasks from CSV</source>
        <translation>Import tasks from CSV</translation>
    </message>
    <message id="data-settings-csv-no-column">
        <source>(none)</source>
        <translation>(none)</translation>
    </message>
    <message id="data-settings-csv-quadrant-column">
        <source>Quadrant</source>
        <translation>Quadrant</translation>
    </message>
    <message id="data-settings-csv-target-list">
        <source>Into the list</source>
        <translation>Into the list</translation>
    </message>
    <message id="data-settings-csv-title-column">
        <source>Title</source>
        <translation>Title</translation>
    </message>
    <message id="data-settings-export-csv">
        <source>Tasks to CSV…</source>
        <translation>Tasks to CSV…</translation>
    </message>
    <message id="data-settings-export-dialog">
        <source>Export tasks</source>
        <translation>Export tasks</translation>
    </message>
    <message id="data-settings-export-done">
        <source>Exported.</source>
        <translation>Exported.</translation>
    </message>
    <message id="data-settings-export-ics">
        <source>Meets to .ics…</source>
        <translation>Meets to .ics…</translation>
    </message>
    <message id="data-settings-export-ics-dialog">
        <source>Export meets</source>
        <translation>Export meets</translation>
    </message>
    <message id="data-settings-export-json">
        <source>Tasks to JSON…</source>
        <translation>Tasks to JSON…</translation>
    </message>
    <message id="data-settings-export-label">
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message id="data-settings-export-markdown">
        <source>Logbook to Markdown…</source>
        <translation>Logbook to Markdown…</translation>
    </message>
    <message id="data-settings-export-markdown-dialog">
        <source>Choose a folder for the logbook</source>
        <translation>Choose a folder for the logbook</translation>
    </message>
    <message id="data-settings-import-csv">
        <source>Import tasks from CSV…</source>
        <translation>Import tasks from CSV…</translation>
    </message>
    <message id="data-settings-import-done">
        <source>Imported %1 items; %2 were already there and were skipped.</source>
        <translation>Imported %1 items; %2 were already there and were skipped.</translation>
    </message>
    <message id="data-settings-import-json">
        <source>Import JSON…</source>
        <translation>Import JSON…</translation>
    </message>
    <message id="data-settings-import-json-dialog">
        <source>Import tasks</source>
        <translation>Import tasks</translation>
    </message>
    <message id="data-settings-meets-from">
        <source>Meets from</source>
        <translation>Meets from</translation>
    </message>
    <message id="data-settings-meets-to">
        <source>to</source>
        <translation>to</translation>
    </message>
    <message id="data-settings-restore">
        <source>Restore…</source>
        <translation>Restore…</translation>
    </message>
    <message id="data-settings-restore-confirm">
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
    <message id="data-settings-restore-done">
        <source>Restored. The data from before is kept as a backup of its own.</source>
        <translation>Restored. The data from before is kept as a backup of its own.</translation>
    </message>
    <message id="data-settings-restore-explanation">
        <source>Your local data goes back to how it was on %1. The current data is backed up first, so this can be undone by restoring that backup.</source>
        <translation>Your local data goes back to how it was on %1. The current data is backed up first, so this can be undone by restoring that backup.</translation>
    </message>
    <message id="data-settings-restore-question">
        <source>Restore this backup?</source>
        <translation>Restore this backup?</translation>
    </message>
    <message id="data-settings-scope-everything">
        <source>Everything</source>
        <translation>Everything</translation>
    </message>
    <message id="data-settings-transfer-cancelled">
        <source>Cancelled. What was already imported stays; importing the same file again adds the rest.</source>
        <translation>Cancelled. What was already imported stays; importing the same file again adds the rest.</translation>
    </message>
    <message id="data-settings-transfer-title">
        <source>Export and import</source>
        <translation>Export and import</translation>
    </message>
    <message id="detail-select-option-text">
        <source>Choose a workspace in the sidebar</source>
        <translation>Choose a workspace in the sidebar</translation>
    </message>
    <message id="eisenhower-matrix-quadrant-empty">
        <source>Drop tasks here</source>
        <translation>Drop tasks here</translation>
    </message>
    <message id="eisenhower-tag-delegate">
        <source>Delegate</source>
        <translation>Delegate</translation>
    </message>
    <message id="eisenhower-tag-delete">
        <source>Eliminate</source>
        <translation>Eliminate</translation>
    </message>
    <message id="eisenhower-tag-do">
        <source>Do now</source>
        <translation>Do now</translation>
    </message>
    <message id="eisenhower-tag-menu-title">
        <source>Quadrant</source>
        <translation>Quadrant</translation>
    </message>
    <message id="eisenhower-tag-none">
        <source>No quadrant</source>
        <translation>No quadrant</translation>
    </message>
    <message id="eisenhower-tag-planning">
        <source>Plan</source>
        <translation>Plan</translation>
    </message>
    <message id="info-console-copy-button">
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message id="info-console-empty-message">
        <source>Nothing recorded yet.</source>
        <translation>Nothing recorded yet.</translation>
    </message>
    <message id="info-console-logging-label">
        <source>Record failures</source>
        <translation>Record failures</translation>
    </message>
    <message id="info-console-title">
        <source>Information console</source>
        <translation>Information console</translation>
    </message>
    <message id="meet-alarm-banner-style-warning">
        <source>The desktop cannot show Tolvane's notifications right now, so alarms will not appear. Check the notification settings.</source>
        <translation>The desktop cannot show Tolvane's notifications right now, so alarms will not appear. Check the notification settings.</translation>
    </message>
    <message id="meet-alarm-button">
        <source>Alarm</source>
        <translation>Alarm</translation>
    </message>
    <message id="meet-alarm-day-button">
        <source>Alarms for the day</source>
        <translation>Alarms for the day</translation>
    </message>
    <message id="meet-alarm-delete-all-button">
        <source>Delete all alarms</source>
        <translation>Delete all alarms</translation>
    </message>
    <message id="meet-alarm-delete-all-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="meet-alarm-delete-all-confirm-button">
        <source>Delete all</source>
        <translation>Delete all</translation>
    </message>
    <message id="meet-alarm-delete-all-confirmation-title">
        <source>Delete every alarm?</source>
        <translation>Delete every alarm?</translation>
    </message>
    <message id="meet-alarm-message-error">
        <source>The message must include {event} where the event's name goes</source>
        <translation>The message must include {event} where the event's name goes</translation>
    </message>
    <message id="meet-alarm-message-hint">
        <source>Write {event} where the meet's name goes, or leave it empty for the usual sentence.</source>
        <translation>Write {event} where the meet's name goes, or leave it empty for the usual sentence.</translation>
    </message>
    <message id="meet-alarm-message-title">
        <source>Spoken message</source>
        <translation>Spoken message</translation>
    </message>
    <message id="meet-alarm-mode-funk">
        <source>Bell</source>
        <translation>Bell</translation>
    </message>
    <message id="meet-alarm-mode-hero">
        <source>Alarm clock</source>
        <translation>Alarm clock</translation>
    </message>
    <message id="meet-alarm-mode-title">
        <source>Alarm sound</source>
        <translation>Alarm sound</translation>
    </message>
    <message id="meet-alarm-mode-voice">
        <source>Spoken sentence</source>
        <translation>Spoken sentence</translation>
    </message>
    <message id="meet-alarm-notification-body">
        <source>Your event is starting</source>
        <translation>Your event is starting</translation>
    </message>
    <message id="meet-alarm-open-action">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="meet-alarm-open-notification-settings-button">
        <source>Notification settings</source>
        <translation>Notification settings</translation>
    </message>
    <message id="meet-alarm-refused-title">
        <source>The alarm was not set</source>
        <translation>The alarm was not set</translation>
    </message>
    <message id="meet-alarm-sample-preview-button">
        <source>Play a sample</source>
        <translation>Play a sample</translation>
    </message>
    <message id="meet-alarm-voice-language-english">
        <source>English</source>
        <translation>English</translation>
    </message>
    <message id="meet-alarm-voice-language-spanish">
        <source>Spanish</source>
        <translation>Spanish</translation>
    </message>
    <message id="meet-alarm-voice-language-title">
        <source>Voice language</source>
        <translation>Voice language</translation>
    </message>
    <message id="meet-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="meet-delete-confirm-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="meet-delete-confirmation-title">
        <source>Delete this event?</source>
        <translation>Delete this event?</translation>
    </message>
    <message id="meet-delete-whole-series-note">
        <source>Every occurrence of this repeating event is deleted.</source>
        <translation>Every occurrence of this repeating event is deleted.</translation>
    </message>
    <message id="meet-detail-delete-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="meet-detail-edit-button">
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message id="meet-detail-join-button">
        <source>Join</source>
        <translation>Join</translation>
    </message>
    <message id="meet-move-failed-title">
        <source>The event was not moved</source>
        <translation>The event was not moved</translation>
    </message>
    <message id="meet-task-done-checkbox">
        <source>Task done</source>
        <translation>Task done</translation>
    </message>
    <message id="menu-app">
        <source>&amp;Tolvane</source>
        <translation>&amp;Tolvane</translation>
    </message>
    <message id="menu-day">
        <source>&amp;Day</source>
        <translation>&amp;Day</translation>
    </message>
    <message id="menu-edit">
        <source>&amp;Edit</source>
        <translation>&amp;Edit</translation>
    </message>
    <message id="menu-quick-add">
        <source>Quick add…</source>
        <translation>Quick add…</translation>
    </message>
    <message id="menu-quit">
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message id="menu-search">
        <source>Search…</source>
        <translation>Search…</translation>
    </message>
    <message id="menu-view">
        <source>&amp;View</source>
        <translation>&amp;View</translation>
    </message>
    <message id="project-overview-empty-state">
        <source>This project has no lists yet.</source>
        <translation>This project has no lists yet.</translation>
    </message>
    <message id="projects-add-button">
        <source>Add project</source>
        <translation>Add project</translation>
    </message>
    <message id="projects-delete-button">
        <source>Delete project</source>
        <translation>Delete project</translation>
    </message>
    <message id="projects-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="projects-delete-confirm-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="projects-delete-confirmation-title">
        <source>Delete this project?</source>
        <translation>Delete this project?</translation>
    </message>
    <message id="projects-delete-has-lists-text">
        <source>Delete its lists first; then the project can be deleted.</source>
        <translation>Delete its lists first; then the project can be deleted.</translation>
    </message>
    <message id="projects-delete-has-lists-title">
        <source>“%1” still has lists</source>
        <translation>“%1” still has lists</translation>
    </message>
    <message id="projects-edit-button">
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message id="projects-empty-state">
        <source>No projects yet. Add your first one below.</source>
        <translation>No projects yet. Add your first one below.</translation>
    </message>
    <message id="projects-loading-state">
        <source>Loading…</source>
        <translation>Loading…</translation>
    </message>
    <message id="projects-screen-title">
        <source>Projects</source>
        <translation>Projects</translation>
    </message>
    <message id="projects-show-every-day-button">
        <source>Show every day</source>
        <translation>Show every day</translation>
    </message>
    <message id="quick-add-chip-remove">
        <source>Keep these words in the title</source>
        <translation>Keep these words in the title</translation>
    </message>
    <message id="quick-add-done">
        <source>Added “%1” to %2 / %3.</source>
        <translation>Added “%1” to %2 / %3.</translation>
    </message>
    <message id="quick-add-empty">
        <source>Type the task first, for example “Call Ana tomorrow at 3pm”.</source>
        <translation>Type the task first, for example “Call Ana tomorrow at 3pm”.</translation>
    </message>
    <message id="quick-add-failed">
        <source>The task “%1” was not added: %2</source>
        <translation>The task “%1” was not added: %2</translation>
    </message>
    <message id="quick-add-kind-date">
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message id="quick-add-kind-list">
        <source>List</source>
        <translation>List</translation>
    </message>
    <message id="quick-add-kind-project">
        <source>Project</source>
        <translation>Project</translation>
    </message>
    <message id="quick-add-kind-quadrant">
        <source>Quadrant</source>
        <translation>Quadrant</translation>
    </message>
    <message id="quick-add-kind-recurrence">
        <source>Repeats</source>
        <translation>Repeats</translation>
    </message>
    <message id="quick-add-kind-reminder">
        <source>Reminder</source>
        <translation>Reminder</translation>
    </message>
    <message id="quick-add-kind-time">
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message id="quick-add-no-account">
        <source>The task “%1” was not added: sign in or create a local account first.</source>
        <translation>The task “%1” was not added: sign in or create a local account first.</translation>
    </message>
    <message id="quick-add-no-list">
        <source>The task “%1” was not added: the project “%2” has no task list.</source>
        <translation>The task “%1” was not added: the project “%2” has no task list.</translation>
    </message>
    <message id="quick-add-no-project">
        <source>The task “%1” was not added: you have no project yet. Create one in Projects first.</source>
        <translation>The task “%1” was not added: you have no project yet. Create one in Projects first.</translation>
    </message>
    <message id="quick-add-no-title">
        <source>The task “%1” was not added: it needs a title besides the day, time and other details.</source>
        <translation>The task “%1” was not added: it needs a title besides the day, time and other details.</translation>
    </message>
    <message id="quick-add-placeholder">
        <source>Call Ana tomorrow at 3pm #Project /List !1</source>
        <translation>Call Ana tomorrow at 3pm #Project /List !1</translation>
    </message>
    <message id="quick-add-title">
        <source>Quick add</source>
        <translation>Quick add</translation>
    </message>
    <message id="quick-add-unknown-list">
        <source>The task “%1” was not added: the project “%2” has no list named “%3”.</source>
        <translation>The task “%1” was not added: the project “%2” has no list named “%3”.</translation>
    </message>
    <message id="quick-add-unknown-project">
        <source>The task “%1” was not added: you have no project named “%2”.</source>
        <translation>The task “%1” was not added: you have no project named “%2”.</translation>
    </message>
    <message id="redo-changed-elsewhere">
        <source>Can't redo %1: it was changed elsewhere since. Nothing was changed.</source>
        <translation>Can't redo %1: it was changed elsewhere since. Nothing was changed.</translation>
    </message>
    <message id="rituals-moved-many">
        <source>%1 daily tasks moved to today.</source>
        <translation>%1 daily tasks moved to today.</translation>
    </message>
    <message id="rituals-moved-one">
        <source>1 daily task moved to today.</source>
        <translation>1 daily task moved to today.</translation>
    </message>
    <message id="rituals-no-account">
        <source>Sign in or create a local account to plan your days.</source>
        <translation>Sign in or create a local account to plan your days.</translation>
    </message>
    <message id="rituals-plan-checklist">
        <source>Today's checklist</source>
        <translation>Today's checklist</translation>
    </message>
    <message id="rituals-plan-due-tasks">
        <source>Tasks due</source>
        <translation>Tasks due</translation>
    </message>
    <message id="rituals-plan-earlier">
        <source>Left over from earlier days</source>
        <translation>Left over from earlier days</translation>
    </message>
    <message id="rituals-plan-meets">
        <source>Today's meets</source>
        <translation>Today's meets</translation>
    </message>
    <message id="rituals-plan-move-all">
        <source>Move all to today</source>
        <translation>Move all to today</translation>
    </message>
    <message id="rituals-plan-move-one">
        <source>Move to today</source>
        <translation>Move to today</translation>
    </message>
    <message id="rituals-plan-no-checklist">
        <source>Nothing on today's checklist yet.</source>
        <translation>Nothing on today's checklist yet.</translation>
    </message>
    <message id="rituals-plan-no-meets">
        <source>No meets today.</source>
        <translation>No meets today.</translation>
    </message>
    <message id="rituals-plan-no-projects">
        <source>No project is shown today.</source>
        <translation>No project is shown today.</translation>
    </message>
    <message id="rituals-plan-nothing-earlier">
        <source>Nothing left over: every earlier day is done.</source>
        <translation>Nothing left over: every earlier day is done.</translation>
    </message>
    <message id="rituals-plan-projects">
        <source>Projects today</source>
        <translation>Projects today</translation>
    </message>
    <message id="rituals-plan-reminder-body">
        <source>Plan your day: what is left from earlier days, today's meets and projects.</source>
        <translation>Plan your day: what is left from earlier days, today's meets and projects.</translation>
    </message>
    <message id="rituals-plan-reminder-title">
        <source>Good morning</source>
        <translation>Good morning</translation>
    </message>
    <message id="rituals-plan-title">
        <source>Plan the day</source>
        <translation>Plan the day</translation>
    </message>
    <message id="rituals-reminder-open">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="rituals-review-completed">
        <source>Tasks completed</source>
        <translation>Tasks completed</translation>
    </message>
    <message id="rituals-review-done">
        <source>Done:</source>
        <translation>Done:</translation>
    </message>
    <message id="rituals-review-empty-day">
        <source>Nothing on the checklist or the calendar today.</source>
        <translation>Nothing on the checklist or the calendar today.</translation>
    </message>
    <message id="rituals-review-heading">
        <source>Review of the day</source>
        <translation>Review of the day</translation>
    </message>
    <message id="rituals-review-left">
        <source>Left for another day:</source>
        <translation>Left for another day:</translation>
    </message>
    <message id="rituals-review-meets">
        <source>Meets:</source>
        <translation>Meets:</translation>
    </message>
    <message id="rituals-review-none">
        <source>None.</source>
        <translation>None.</translation>
    </message>
    <message id="rituals-review-open">
        <source>Still open</source>
        <translation>Still open</translation>
    </message>
    <message id="rituals-review-projects">
        <source>Add it to the day's entry of:</source>
        <translation>Add it to the day's entry of:</translation>
    </message>
    <message id="rituals-review-reminder-body">
        <source>Review what the day held and write it to the logbook.</source>
        <translation>Review what the day held and write it to the logbook.</translation>
    </message>
    <message id="rituals-review-reminder-title">
        <source>Time to close the day</source>
        <translation>Time to close the day</translation>
    </message>
    <message id="rituals-review-summary">
        <source>Summary for the logbook (you can edit it)</source>
        <translation>Summary for the logbook (you can edit it)</translation>
    </message>
    <message id="rituals-review-tasks-completed">
        <source>Tasks completed:</source>
        <translation>Tasks completed:</translation>
    </message>
    <message id="rituals-review-ticked">
        <source>Ticked today</source>
        <translation>Ticked today</translation>
    </message>
    <message id="rituals-review-title">
        <source>Review the day</source>
        <translation>Review the day</translation>
    </message>
    <message id="rituals-review-write">
        <source>Write to the logbook</source>
        <translation>Write to the logbook</translation>
    </message>
    <message id="rituals-review-written">
        <source>Added to %1 logbook entries.</source>
        <translation>Added to %1 logbook entries.</translation>
    </message>
    <message id="rituals-settings-auto-move">
        <source>Move unfinished daily tasks of earlier days to today by themselves</source>
        <translation>Move unfinished daily tasks of earlier days to today by themselves</translation>
    </message>
    <message id="rituals-settings-no-reminder">
        <source>Never</source>
        <translation>Never</translation>
    </message>
    <message id="rituals-settings-plan-at-start">
        <source>Open the morning plan at the first start of a day</source>
        <translation>Open the morning plan at the first start of a day</translation>
    </message>
    <message id="rituals-settings-plan-hour">
        <source>Remind me to plan the day at</source>
        <translation>Remind me to plan the day at</translation>
    </message>
    <message id="rituals-settings-review-hour">
        <source>Remind me to review the day at</source>
        <translation>Remind me to review the day at</translation>
    </message>
    <message id="rituals-settings-start-at-login">
        <source>Start Tolvane when I log in, in the tray</source>
        <translation>Start Tolvane when I log in, in the tray</translation>
    </message>
    <message id="rituals-settings-start-at-login-failed">
        <source>The login start could not be changed: %1</source>
        <translation>The login start could not be changed: %1</translation>
    </message>
    <message id="rituals-settings-start-at-login-hint">
        <source>Alarms and reminders ring only while Tolvane runs. With this on, Tolvane starts hidden in the tray when you log in, and opens when you click it. It is turned on by itself when you arm your first alarm; turn it off here if you would rather start Tolvane yourself.</source>
        <translation>Alarms and reminders ring only while Tolvane runs. With this on, Tolvane starts hidden in the tray when you log in, and opens when you click it. It is turned on by itself when you arm your first alarm; turn it off here if you would rather start Tolvane yourself.</translation>
    </message>
    <message id="schedule-block-time-action">
        <source>Block time for this task</source>
        <translation>Block time for this task</translation>
    </message>
    <message id="schedule-block-time-no-room">
        <source>There is no free half hour left on this day</source>
        <translation>There is no free half hour left on this day</translation>
    </message>
    <message id="schedule-block-time-task-unreadable">
        <source>The task could not be read</source>
        <translation>The task could not be read</translation>
    </message>
    <message id="schedule-login-required-state">
        <source>Set up your account to start.</source>
        <translation>Set up your account to start.</translation>
    </message>
    <message id="schedule-notice-deleted">
        <source>Event deleted</source>
        <translation>Event deleted</translation>
    </message>
    <message id="schedule-notice-moved">
        <source>Event moved</source>
        <translation>Event moved</translation>
    </message>
    <message id="schedule-notice-resized">
        <source>Event length changed</source>
        <translation>Event length changed</translation>
    </message>
    <message id="schedule-notice-time-blocked">
        <source>Time blocked for the task</source>
        <translation>Time blocked for the task</translation>
    </message>
    <message id="schedule-projects-no-default-list-text">
        <source>This project has no default list.</source>
        <translation>This project has no default list.</translation>
    </message>
    <message id="schedule-projects-panel-title">
        <source>Projects</source>
        <translation>Projects</translation>
    </message>
    <message id="schedule-task-failed-title">
        <source>The task was not changed</source>
        <translation>The task was not changed</translation>
    </message>
    <message id="schedule-undo-button">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="search-group-daily-tasks">
        <source>Daily tasks</source>
        <translation>Daily tasks</translation>
    </message>
    <message id="search-group-lists">
        <source>Lists</source>
        <translation>Lists</translation>
    </message>
    <message id="search-group-logbook">
        <source>Logbook</source>
        <translation>Logbook</translation>
    </message>
    <message id="search-group-meets">
        <source>Meets</source>
        <translation>Meets</translation>
    </message>
    <message id="search-group-projects">
        <source>Projects</source>
        <translation>Projects</translation>
    </message>
    <message id="search-group-tasks">
        <source>Tasks</source>
        <translation>Tasks</translation>
    </message>
    <message id="search-hint">
        <source>Type to search</source>
        <translation>Type to search</translation>
    </message>
    <message id="search-loading">
        <source>Loading…</source>
        <translation>Loading…</translation>
    </message>
    <message id="search-nothing-found">
        <source>Nothing found</source>
        <translation>Nothing found</translation>
    </message>
    <message id="search-placeholder">
        <source>Search projects, tasks, logbook, meets…</source>
        <translation>Search projects, tasks, logbook, meets…</translation>
    </message>
    <message id="sidebar-agenda-link">
        <source>Schedule</source>
        <translation>Schedule</translation>
    </message>
    <message id="sidebar-bitacora-link">
        <source>Logbook</source>
        <translation>Logbook</translation>
    </message>
    <message id="sidebar-menu-title">
        <source>Tolvane</source>
        <translation>Tolvane</translation>
    </message>
    <message id="sidebar-projects-link">
        <source>Projects</source>
        <translation>Projects</translation>
    </message>
    <message id="store-migration-progress">
        <source>Updating your data…</source>
        <translation>Updating your data…</translation>
    </message>
    <message id="task-list-view-mode-detail">
        <source>Matrix</source>
        <translation>Matrix</translation>
    </message>
    <message id="task-list-view-mode-tasks">
        <source>Tasks</source>
        <translation>Tasks</translation>
    </message>
    <message id="task-lists-add-button">
        <source>Add list</source>
        <translation>Add list</translation>
    </message>
    <message id="task-lists-default-badge">
        <source>Default</source>
        <translation>Default</translation>
    </message>
    <message id="task-lists-delete-button">
        <source>Delete list</source>
        <translation>Delete list</translation>
    </message>
    <message id="task-lists-delete-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="task-lists-delete-confirm-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="task-lists-delete-confirmation-title">
        <source>Delete this list and its tasks?</source>
        <translation>Delete this list and its tasks?</translation>
    </message>
    <message id="task-lists-rename-button">
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message id="task-lists-set-default-button">
        <source>Make default</source>
        <translation>Make default</translation>
    </message>
    <message id="task-reminder-done-action">
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message id="task-reminder-due">
        <source>Due %1</source>
        <translation>Due %1</translation>
    </message>
    <message id="task-reminder-snooze-action">
        <source>Snooze %1 min</source>
        <translation>Snooze %1 min</translation>
    </message>
    <message id="tasks-add-button">
        <source>Add task</source>
        <translation>Add task</translation>
    </message>
    <message id="tasks-day-view-overdue-count">
        <source>%1 overdue</source>
        <translation>%1 overdue</translation>
    </message>
    <message id="tasks-day-view-today">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="tasks-day-view-today-empty">
        <source>Nothing due today.</source>
        <translation>Nothing due today.</translation>
    </message>
    <message id="tasks-day-view-tomorrow">
        <source>Tomorrow</source>
        <translation>Tomorrow</translation>
    </message>
    <message id="tasks-day-view-upcoming">
        <source>Upcoming</source>
        <translation>Upcoming</translation>
    </message>
    <message id="tasks-day-view-upcoming-empty">
        <source>Nothing due in the next seven days.</source>
        <translation>Nothing due in the next seven days.</translation>
    </message>
    <message id="tasks-delete-button">
        <source>Delete task</source>
        <translation>Delete task</translation>
    </message>
    <message id="tasks-delete-completed-button">
        <source>Delete completed</source>
        <translation>Delete completed</translation>
    </message>
    <message id="tasks-delete-completed-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="tasks-delete-completed-confirm-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="tasks-delete-completed-confirmation-title">
        <source>Delete %1 completed tasks?</source>
        <translation>Delete %1 completed tasks?</translation>
    </message>
    <message id="tasks-delete-completed-confirmation-title-one">
        <source>Delete the completed task?</source>
        <translation>Delete the completed task?</translation>
    </message>
    <message id="tasks-delete-completed-error-title">
        <source>The completed tasks could not be deleted</source>
        <translation>The completed tasks could not be deleted</translation>
    </message>
    <message id="tasks-due-days-ago">
        <source>%1 days ago</source>
        <translation>%1 days ago</translation>
    </message>
    <message id="tasks-due-in-days">
        <source>in %1 days</source>
        <translation>in %1 days</translation>
    </message>
    <message id="tasks-due-overdue">
        <source>Overdue</source>
        <translation>Overdue</translation>
    </message>
    <message id="tasks-due-today">
        <source>today</source>
        <translation>today</translation>
    </message>
    <message id="tasks-due-tomorrow">
        <source>tomorrow</source>
        <translation>tomorrow</translation>
    </message>
    <message id="tasks-due-yesterday">
        <source>yesterday</source>
        <translation>yesterday</translation>
    </message>
    <message id="tasks-empty-state">
        <source>No tasks yet.</source>
        <translation>No tasks yet.</translation>
    </message>
    <message id="tasks-repeats">
        <source>Repeats</source>
        <translation>Repeats</translation>
    </message>
    <message id="tasks-schedule-at-time">
        <source>At</source>
        <translation>At</translation>
    </message>
    <message id="tasks-schedule-button">
        <source>Due date, repetition and reminder (Ctrl+E)</source>
        <translation>Due date, repetition and reminder (Ctrl+E)</translation>
    </message>
    <message id="tasks-schedule-due">
        <source>Due</source>
        <translation>Due</translation>
    </message>
    <message id="tasks-schedule-end-count">
        <source>A number of times</source>
        <translation>A number of times</translation>
    </message>
    <message id="tasks-schedule-end-date">
        <source>Until a date</source>
        <translation>Until a date</translation>
    </message>
    <message id="tasks-schedule-end-never">
        <source>Forever</source>
        <translation>Forever</translation>
    </message>
    <message id="tasks-schedule-ends">
        <source>Ends</source>
        <translation>Ends</translation>
    </message>
    <message id="tasks-schedule-from-completion">
        <source>Count from when it is done</source>
        <translation>Count from when it is done</translation>
    </message>
    <message id="tasks-schedule-interval-prefix">
        <source>N =</source>
        <translation>N =</translation>
    </message>
    <message id="tasks-schedule-monthly-last-day">
        <source>On the last day</source>
        <translation>On the last day</translation>
    </message>
    <message id="tasks-schedule-monthly-same-day">
        <source>On the same day</source>
        <translation>On the same day</translation>
    </message>
    <message id="tasks-schedule-monthly-same-weekday">
        <source>On the same weekday (e.g. last Friday)</source>
        <translation>On the same weekday (e.g. last Friday)</translation>
    </message>
    <message id="tasks-schedule-reminder">
        <source>Remind me</source>
        <translation>Remind me</translation>
    </message>
    <message id="tasks-schedule-reminder-at-time">
        <source>At the due time</source>
        <translation>At the due time</translation>
    </message>
    <message id="tasks-schedule-reminder-day">
        <source>1 day before</source>
        <translation>1 day before</translation>
    </message>
    <message id="tasks-schedule-reminder-day-only">
        <source>Without a time, the reminder counts from %1 that day.</source>
        <translation>Without a time, the reminder counts from %1 that day.</translation>
    </message>
    <message id="tasks-schedule-reminder-hours">
        <source>%1 h before</source>
        <translation>%1 h before</translation>
    </message>
    <message id="tasks-schedule-reminder-minutes">
        <source>%1 min before</source>
        <translation>%1 min before</translation>
    </message>
    <message id="tasks-schedule-reminder-none">
        <source>No reminder</source>
        <translation>No reminder</translation>
    </message>
    <message id="tasks-schedule-repeat">
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message id="tasks-schedule-repeat-daily">
        <source>Every N days</source>
        <translation>Every N days</translation>
    </message>
    <message id="tasks-schedule-repeat-monthly">
        <source>Every N months</source>
        <translation>Every N months</translation>
    </message>
    <message id="tasks-schedule-repeat-never">
        <source>Does not repeat</source>
        <translation>Does not repeat</translation>
    </message>
    <message id="tasks-schedule-repeat-weekly">
        <source>Every N weeks</source>
        <translation>Every N weeks</translation>
    </message>
    <message id="tasks-schedule-repeat-yearly">
        <source>Every N years</source>
        <translation>Every N years</translation>
    </message>
    <message id="tasks-schedule-save">
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message id="tasks-schedule-skip">
        <source>Skip this time</source>
        <translation>Skip this time</translation>
    </message>
    <message id="tasks-select-list-placeholder">
        <source>Choose a list or a project</source>
        <translation>Choose a list or a project</translation>
    </message>
    <message id="tasks-status-completed">
        <source>Completed</source>
        <translation>Completed</translation>
    </message>
    <message id="undo-action">
        <source>%1 %2 '%3'</source>
        <translation>%1 %2 '%3'</translation>
    </message>
    <message id="undo-changed-elsewhere">
        <source>Can't undo %1: it was changed elsewhere since. Nothing was changed.</source>
        <translation>Can't undo %1: it was changed elsewhere since. Nothing was changed.</translation>
    </message>
    <message id="undo-delete-completed">
        <source>delete completed tasks (%1)</source>
        <translation>delete completed tasks (%1)</translation>
    </message>
    <message id="undo-failed">
        <source>Could not finish: %1</source>
        <translation>Could not finish: %1</translation>
    </message>
    <message id="undo-menu-redo">
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message id="undo-menu-redo-action">
        <source>Redo %1</source>
        <translation>Redo %1</translation>
    </message>
    <message id="undo-menu-undo">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="undo-menu-undo-action">
        <source>Undo %1</source>
        <translation>Undo %1</translation>
    </message>
    <message id="undo-notice-deleted">
        <source>Deleted %1 '%2'</source>
        <translation>Deleted %1 '%2'</translation>
    </message>
    <message id="undo-notice-deleted-completed">
        <source>Deleted completed tasks (%1)</source>
        <translation>Deleted completed tasks (%1)</translation>
    </message>
    <message id="undo-notice-undo">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="undo-noun-bitacora-entry">
        <source>logbook entry</source>
        <translation>logbook entry</translation>
    </message>
    <message id="undo-noun-daily-task">
        <source>daily task</source>
        <translation>daily task</translation>
    </message>
    <message id="undo-noun-event">
        <source>event</source>
        <translation>event</translation>
    </message>
    <message id="undo-noun-project">
        <source>project</source>
        <translation>project</translation>
    </message>
    <message id="undo-noun-task">
        <source>task</source>
        <translation>task</translation>
    </message>
    <message id="undo-noun-task-list">
        <source>list</source>
        <translation>list</translation>
    </message>
    <message id="undo-verb-add">
        <source>add</source>
        <translation>add</translation>
    </message>
    <message id="undo-verb-complete">
        <source>complete</source>
        <translation>complete</translation>
    </message>
    <message id="undo-verb-delete">
        <source>delete</source>
        <translation>delete</translation>
    </message>
    <message id="undo-verb-edit">
        <source>edit</source>
        <translation>edit</translation>
    </message>
    <message id="undo-verb-move">
        <source>move</source>
        <translation>move</translation>
    </message>
    <message id="undo-verb-reopen">
        <source>reopen</source>
        <translation>reopen</translation>
    </message>
    <message id="undo-verb-set-default">
        <source>make default</source>
        <translation>make default</translation>
    </message>
    <message id="undo-verb-set-tag">
        <source>change quadrant of</source>
        <translation>change quadrant of</translation>
    </message>
    <message id="user-settings-account-section-title">
        <source>My account</source>
        <translation>My account</translation>
    </message>
    <message id="user-settings-accounts-section-title">
        <source>Calendar accounts</source>
        <translation>Calendar accounts</translation>
    </message>
    <message id="user-settings-alarm-section-title">
        <source>Alarms</source>
        <translation>Alarms</translation>
    </message>
    <message id="user-settings-appearance-dark">
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message id="user-settings-appearance-label">
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message id="user-settings-appearance-light">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="user-settings-appearance-system">
        <source>As the desktop</source>
        <translation>As the desktop</translation>
    </message>
    <message id="user-settings-back-to-chooser-button">
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message id="user-settings-calendars-activate-column">
        <source>Show</source>
        <translation>Show</translation>
    </message>
    <message id="user-settings-calendars-alarm-column">
        <source>Alarms</source>
        <translation>Alarms</translation>
    </message>
    <message id="user-settings-calendars-default-calendar-automatic">
        <source>The calendar store's default</source>
        <translation>The calendar store's default</translation>
    </message>
    <message id="user-settings-calendars-default-calendar-title">
        <source>Calendar for new meets</source>
        <translation>Calendar for new meets</translation>
    </message>
    <message id="user-settings-calendars-empty-state">
        <source>No calendars yet. Calendars of the accounts you set up on this computer show up here.</source>
        <translation>No calendars yet. Calendars of the accounts you set up on this computer show up here.</translation>
    </message>
    <message id="user-settings-calendars-section-title">
        <source>Calendars</source>
        <translation>Calendars</translation>
    </message>
    <message id="user-settings-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="user-settings-close-button">
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message id="user-settings-data-section-title">
        <source>Backups and export</source>
        <translation>Backups and export</translation>
    </message>
    <message id="user-settings-delete-local-account-button">
        <source>Delete local account</source>
        <translation>Delete local account</translation>
    </message>
    <message id="user-settings-delete-local-account-confirm-button">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="user-settings-delete-local-account-confirmation-message">
        <source>Tolvane forgets this account. A new local account starts with no projects.</source>
        <translation>Tolvane forgets this account. A new local account starts with no projects.</translation>
    </message>
    <message id="user-settings-delete-local-account-confirmation-title">
        <source>Delete the local account?</source>
        <translation>Delete the local account?</translation>
    </message>
    <message id="user-settings-email-field">
        <source>E-mail</source>
        <translation>E-mail</translation>
    </message>
    <message id="user-settings-email-invalid-text">
        <source>Enter an e-mail address like name@example.com, or leave it empty.</source>
        <translation>Enter an e-mail address like name@example.com, or leave it empty.</translation>
    </message>
    <message id="user-settings-first-name-field">
        <source>First name</source>
        <translation>First name</translation>
    </message>
    <message id="user-settings-google-account-text">
        <source>Signed in with Google</source>
        <translation>Signed in with Google</translation>
    </message>
    <message id="user-settings-google-sign-in-button">
        <source>Sign in with Google</source>
        <translation>Sign in with Google</translation>
    </message>
    <message id="user-settings-google-sign-in-error-text">
        <source>Google sign-in did not work. Please try again.</source>
        <translation>Google sign-in did not work. Please try again.</translation>
    </message>
    <message id="user-settings-help-message-field">
        <source>Tell us what happened or what you need</source>
        <translation>Tell us what happened or what you need</translation>
    </message>
    <message id="user-settings-help-section-title">
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message id="user-settings-help-send-button">
        <source>Send</source>
        <translation>Send</translation>
    </message>
    <message id="user-settings-help-send-failed-text">
        <source>The message could not be sent. It is kept here; try again later.</source>
        <translation>The message could not be sent. It is kept here; try again later.</translation>
    </message>
    <message id="user-settings-help-sent-button">
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message id="user-settings-help-sent-message">
        <source>Thank you. We will answer you by e-mail.</source>
        <translation>Thank you. We will answer you by e-mail.</translation>
    </message>
    <message id="user-settings-help-sent-title">
        <source>Message sent</source>
        <translation>Message sent</translation>
    </message>
    <message id="user-settings-help-unavailable-text">
        <source>This copy of Tolvane has no support service or support address set up, so messages cannot be sent from here. The console below keeps what went wrong, for you to pass on.</source>
        <translation>This copy of Tolvane has no support service or support address set up, so messages cannot be sent from here. The console below keeps what went wrong, for you to pass on.</translation>
    </message>
    <message id="user-settings-hours-end-label">
        <source>Day ends at</source>
        <translation>Day ends at</translation>
    </message>
    <message id="user-settings-hours-hint">
        <source>The schedule shows the hours from the first to the last; meets outside them still appear at the edges.</source>
        <translation>The schedule shows the hours from the first to the last; meets outside them still appear at the edges.</translation>
    </message>
    <message id="user-settings-hours-section-title">
        <source>Schedule hours</source>
        <translation>Schedule hours</translation>
    </message>
    <message id="user-settings-hours-start-label">
        <source>Day starts at</source>
        <translation>Day starts at</translation>
    </message>
    <message id="user-settings-last-name-field">
        <source>Last name</source>
        <translation>Last name</translation>
    </message>
    <message id="user-settings-local-account-text">
        <source>Local account: your data stays encrypted on this computer</source>
        <translation>Local account: your data stays encrypted on this computer</translation>
    </message>
    <message id="user-settings-logout-button">
        <source>Sign out</source>
        <translation>Sign out</translation>
    </message>
    <message id="user-settings-logout-cancel-button">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="user-settings-logout-confirm-button">
        <source>Sign out</source>
        <translation>Sign out</translation>
    </message>
    <message id="user-settings-logout-confirmation-message">
        <source>Your projects stay on the server; sign in again to see them.</source>
        <translation>Your projects stay on the server; sign in again to see them.</translation>
    </message>
    <message id="user-settings-logout-confirmation-title">
        <source>Sign out of Tolvane?</source>
        <translation>Sign out of Tolvane?</translation>
    </message>
    <message id="user-settings-save-button">
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message id="user-settings-screen-title">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="user-settings-setup-chooser-title">
        <source>Set up your account</source>
        <translation>Set up your account</translation>
    </message>
    <message id="user-settings-setup-local-button">
        <source>Use Tolvane on this computer</source>
        <translation>Use Tolvane on this computer</translation>
    </message>
</context>
</TS>
