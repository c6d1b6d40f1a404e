-- Tasks gain a time of day, repetition, reminders and a completion time. Every column has a
-- default that means "none", so the tasks already stored keep exactly their old behaviour.
ALTER TABLE tasks
    ADD COLUMN due_has_time boolean NOT NULL DEFAULT false,
    -- The rule as the JSON object of the API's "tasRecurrence", checked before it is stored.
    ADD COLUMN recurrence text,
    ADD COLUMN occurrence integer NOT NULL DEFAULT 1 CHECK (occurrence >= 1),
    ADD COLUMN reminder_minutes_before integer CHECK (reminder_minutes_before >= 0),
    ADD COLUMN completed_at timestamptz;
