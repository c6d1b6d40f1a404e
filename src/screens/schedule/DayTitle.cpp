#include "screens/schedule/DayTitle.h"

#include <QLocale>

namespace DayTitle {

QString of(const QDate& date)
{
    QString title = QLocale().toString(date, QLocale::LongFormat);
    if (!title.isEmpty())
        title[0] = title.at(0).toUpper();
    return title;
}

} // namespace DayTitle
