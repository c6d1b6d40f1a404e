#include "screens/projects/TaskActions.h"

#include "screens/projects/TaskRowView.h"

void TaskActions::attach(TaskRowView* row)
{
    connect(row, &TaskRowView::toggleDone, this, &TaskActions::toggleDone);
    connect(row, &TaskRowView::rename, this, &TaskActions::rename);
    connect(row, &TaskRowView::deleteRequested, this, &TaskActions::deleteRequested);
    connect(row, &TaskRowView::setTag, this, &TaskActions::setTag);
    connect(row, &TaskRowView::schedule, this, &TaskActions::schedule);
    connect(row, &TaskRowView::skipOccurrence, this, &TaskActions::skipOccurrence);
}
