#include "platform/NotificationCenter.h"

NotificationCenter& NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::post(const QString& name, const QVariant& object)
{
    Q_EMIT posted(name, object);
}

QMetaObject::Connection NotificationCenter::addObserver(const QString& name, const QObject* context, Observer observer)
{
    return connect(this, &NotificationCenter::posted, context,
        [name, observer = std::move(observer)](const QString& postedName, const QVariant& object) {
            if (postedName == name)
                observer(object);
        });
}
