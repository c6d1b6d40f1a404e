-- The days' views find a user's open tasks by due date and the evening review the done ones by
-- completion time, across all of the user's lists.
CREATE INDEX tasks_open_by_due_date ON tasks (user_id, due_date) WHERE NOT is_done;
CREATE INDEX tasks_done_by_completion ON tasks (user_id, completed_at) WHERE is_done;
