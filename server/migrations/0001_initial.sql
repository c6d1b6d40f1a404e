-- Every table is keyed by the owning user's id first, and every query names that id, so the
-- tables can be distributed by user without change. The one exception is the identity table,
-- keyed by the sign-in subject: it is how a request finds its user id in the first place.

CREATE TABLE identities (
    subject text PRIMARY KEY,
    user_id uuid NOT NULL UNIQUE
);

CREATE TABLE users (
    user_id uuid PRIMARY KEY,
    first_name text NOT NULL,
    last_name text NOT NULL,
    email text NOT NULL,
    registered_at timestamptz NOT NULL DEFAULT now()
);

-- "position" keeps the order records were made in: the client shows lists in the order the
-- server returns them, as the local store does.
CREATE TABLE projects (
    user_id uuid NOT NULL,
    project_id uuid NOT NULL,
    position bigint GENERATED ALWAYS AS IDENTITY,
    name text NOT NULL,
    description text NOT NULL,
    show_every_day boolean NOT NULL,
    PRIMARY KEY (user_id, project_id)
);
CREATE INDEX projects_by_position ON projects (user_id, position);

CREATE TABLE task_lists (
    user_id uuid NOT NULL,
    list_id uuid NOT NULL,
    position bigint GENERATED ALWAYS AS IDENTITY,
    project_id uuid NOT NULL,
    name text NOT NULL,
    description text NOT NULL,
    is_default boolean NOT NULL,
    PRIMARY KEY (user_id, list_id),
    -- No cascade: a project that still has lists cannot be deleted.
    FOREIGN KEY (user_id, project_id) REFERENCES projects (user_id, project_id)
);
CREATE INDEX task_lists_by_project ON task_lists (user_id, project_id, position);

CREATE TABLE tasks (
    user_id uuid NOT NULL,
    task_id uuid NOT NULL,
    position bigint GENERATED ALWAYS AS IDENTITY,
    project_id uuid NOT NULL,
    list_id uuid NOT NULL,
    title text NOT NULL,
    is_done boolean NOT NULL DEFAULT false,
    due_date timestamptz,
    eisenhower_tag text,
    PRIMARY KEY (user_id, task_id),
    FOREIGN KEY (user_id, list_id) REFERENCES task_lists (user_id, list_id) ON DELETE CASCADE
);
CREATE INDEX tasks_by_list ON tasks (user_id, list_id, position);

CREATE TABLE daily_tasks (
    user_id uuid NOT NULL,
    daily_task_id uuid NOT NULL,
    position bigint GENERATED ALWAYS AS IDENTITY,
    day timestamptz NOT NULL,
    title text NOT NULL,
    is_done boolean NOT NULL DEFAULT false,
    PRIMARY KEY (user_id, daily_task_id)
);
CREATE INDEX daily_tasks_by_day ON daily_tasks (user_id, day, position);

CREATE TABLE bitacora_entries (
    user_id uuid NOT NULL,
    entry_id uuid NOT NULL,
    position bigint GENERATED ALWAYS AS IDENTITY,
    project_id uuid NOT NULL,
    entry_date timestamptz NOT NULL,
    content text NOT NULL,
    PRIMARY KEY (user_id, entry_id),
    FOREIGN KEY (user_id, project_id) REFERENCES projects (user_id, project_id) ON DELETE CASCADE
);
CREATE INDEX bitacora_entries_by_project ON bitacora_entries (user_id, project_id, position);

CREATE TABLE events (
    user_id uuid NOT NULL,
    event_id uuid NOT NULL,
    position bigint GENERATED ALWAYS AS IDENTITY,
    title text NOT NULL,
    schedule timestamptz NOT NULL,
    duration_minutes integer NOT NULL,
    has_alarm boolean NOT NULL,
    description text NOT NULL,
    repeat text NOT NULL,
    custom_repeat text NOT NULL,
    PRIMARY KEY (user_id, event_id)
);
CREATE INDEX events_by_position ON events (user_id, position);

CREATE TABLE support_messages (
    user_id uuid NOT NULL,
    message_id uuid NOT NULL,
    sent_at timestamptz NOT NULL DEFAULT date_trunc('second', now()),
    message text NOT NULL,
    PRIMARY KEY (user_id, message_id)
);
