#pragma once

#include "storage/RealmDatabase.h"

#include <QStringList>

#include <optional>

// The records of one stored type on an open handle. Model describes the type:
//   static RealmObjectType objectType();   its table; the first column is the primary key
//   RealmRow toRow() const;                its values in column order
//   static Model fromRow(const RealmRow&);
// Records come back in the order they were added (the store's own order).
template <typename Model> class RealmTable {
public:
    explicit RealmTable(RealmDatabase& database)
        : m_database(database)
        , m_type(Model::objectType())
        , m_columns(m_type.propertyNames())
    {
    }

    // Throws RealmError when a record with the same primary key exists.
    void add(const Model& record)
    {
        m_database.execute(
            QStringLiteral("INSERT INTO \"%1\" VALUES (%2)").arg(m_type.name, placeholders()), record.toRow());
    }

    // Overwrites every field of the record with the same primary key; false when there is none.
    bool update(const Model& record)
    {
        QStringList assignments;
        for (const QString& column : m_columns.mid(1))
            assignments.append(column + QStringLiteral(" = ?"));
        QVariantList values = record.toRow();
        values.append(values.takeFirst());
        m_database.execute(QStringLiteral("UPDATE \"%1\" SET %2 WHERE %3 = ?")
                               .arg(m_type.name, assignments.join(QStringLiteral(", ")), m_columns.constFirst()),
            values);
        return changes() > 0;
    }

    // False when there was no such record.
    bool remove(const QVariant& primaryKey)
    {
        m_database.execute(
            QStringLiteral("DELETE FROM \"%1\" WHERE %2 = ?").arg(m_type.name, m_columns.constFirst()), {primaryKey});
        return changes() > 0;
    }

    // Deletes the records matching an SQL condition over the columns; returns how many went.
    int removeWhere(const QString& where, const QVariantList& bindings)
    {
        m_database.execute(QStringLiteral("DELETE FROM \"%1\" WHERE %2").arg(m_type.name, where), bindings);
        return changes();
    }

    std::optional<Model> object(const QVariant& primaryKey)
    {
        const QList<Model> found = objects(m_columns.constFirst() + QStringLiteral(" = ?"), {primaryKey});
        return found.isEmpty() ? std::nullopt : std::optional<Model>(found.constFirst());
    }

    // The records matching an SQL condition over the columns, in store order.
    QList<Model> objects(const QString& where, const QVariantList& bindings)
    {
        QList<Model> records;
        const auto rows = m_database.query(
            QStringLiteral("SELECT * FROM \"%1\" WHERE %2 ORDER BY rowid").arg(m_type.name, where), bindings);
        records.reserve(rows.size());
        for (const RealmRow& row : rows)
            records.append(Model::fromRow(row));
        return records;
    }

private:
    QString placeholders() const
    {
        QStringList marks;
        marks.fill(QStringLiteral("?"), m_columns.size());
        return marks.join(QStringLiteral(", "));
    }

    int changes() { return m_database.changes(); }

    RealmDatabase& m_database;
    RealmObjectType m_type;
    QStringList m_columns;
};
