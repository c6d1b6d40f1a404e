#include "wire/JSONCoding.h"

#include "networking/EmptyBody.h"
#include "support/TestMain.h"
#include "wire/JSONObjectReader.h"

#include <QTest>
#include <QTimeZone>

namespace {

struct ItemDTO {
    QString itmName;
    bool itmDone = false;
    qint64 itmCount = 0;
    QDateTime itmDueDate;
    std::optional<QString> itmNote;

    static ItemDTO fromJson(const QJsonValue& json)
    {
        const JSONObjectReader reader(json);
        return {reader.string(QLatin1String("itmName")), reader.boolean(QLatin1String("itmDone")),
            reader.integer(QLatin1String("itmCount")), reader.date(QLatin1String("itmDueDate")),
            reader.optionalString(QLatin1String("itmNote"))};
    }

    QJsonValue toJson() const
    {
        return QJsonObject {{QStringLiteral("itmName"), itmName}, {QStringLiteral("itmDone"), itmDone},
            {QStringLiteral("itmCount"), itmCount}, {QStringLiteral("itmDueDate"), JSONCoding::encodeDate(itmDueDate)}};
    }
};

struct ListDTO {
    QList<ItemDTO> items;

    static ListDTO fromJson(const QJsonValue& json)
    {
        return {JSONObjectReader(json).decode<QList<ItemDTO>>(QLatin1String("items"))};
    }
};

QString decodingFailure(const QByteArray& data)
{
    try {
        JSONCoding::decode<ItemDTO>(data);
    } catch (const DecodingError& error) {
        return error.localizedDescription();
    }
    return QStringLiteral("<decoded>");
}

} // namespace

class JSONCodingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteDatesInUtcWithoutFractions()
    {
        // 04:00 in Bogota (UTC-5) with milliseconds that the wire form has no room for.
        const QDateTime local(QDate(2026, 11, 21), QTime(4, 0, 0, 750), QTimeZone("America/Bogota"));
        QCOMPARE(JSONCoding::encodeDate(local), QStringLiteral("2026-11-21T09:00:00Z"));
    }

    void shouldReadDatesWithZuluOrOffset_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QDateTime>("instant");
        const QDateTime nineUtc(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC);
        QTest::newRow("zulu") << QStringLiteral("2026-11-21T09:00:00Z") << nineUtc;
        QTest::newRow("offset") << QStringLiteral("2026-11-21T04:00:00-05:00") << nineUtc;
        QTest::newRow("offset without colon") << QStringLiteral("2026-11-21T14:30:00+0530") << nineUtc;
    }

    void shouldReadDatesWithZuluOrOffset()
    {
        QFETCH(QString, text);
        QFETCH(QDateTime, instant);
        const QDateTime decoded = JSONCoding::decodeDate(text);
        QCOMPARE(decoded, instant);
        QCOMPARE(decoded.timeSpec(), Qt::UTC);
    }

    void shouldRejectDatesTheBackendDoesNotWrite_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("fractional seconds") << QStringLiteral("2026-11-21T09:00:00.000Z");
        QTest::newRow("no zone") << QStringLiteral("2026-11-21T09:00:00");
        QTest::newRow("day only") << QStringLiteral("2026-11-21");
        QTest::newRow("impossible day") << QStringLiteral("2026-02-30T09:00:00Z");
        QTest::newRow("space separator") << QStringLiteral("2026-11-21 09:00:00Z");
    }

    void shouldRejectDatesTheBackendDoesNotWrite()
    {
        QFETCH(QString, text);
        QVERIFY_THROWS_EXCEPTION(DecodingError, JSONCoding::decodeDate(text));
    }

    void shouldRoundTripADto()
    {
        const ItemDTO item {QStringLiteral("Plan"), true, 3, QDateTime(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC), {}};
        const QByteArray wire = JSONCoding::serialize(JSONCoding::encodeValue(item));
        QCOMPARE(
            wire, QByteArray(R"({"itmCount":3,"itmDone":true,"itmDueDate":"2026-11-21T09:00:00Z","itmName":"Plan"})"));
        const ItemDTO back = JSONCoding::decode<ItemDTO>(wire);
        QCOMPARE(back.itmName, item.itmName);
        QCOMPARE(back.itmDone, true);
        QCOMPARE(back.itmCount, 3);
        QCOMPARE(back.itmDueDate, item.itmDueDate);
        QVERIFY(!back.itmNote.has_value());
    }

    void shouldEncodeCollectionsAndTheEmptyBody()
    {
        QCOMPARE(JSONCoding::serialize(JSONCoding::encodeValue(EmptyBody {})), QByteArray("{}"));
        const QList<ItemDTO> none;
        QCOMPARE(JSONCoding::serialize(JSONCoding::encodeValue(none)), QByteArray("[]"));
        const std::vector<QJsonValue> values {QJsonValue(1), QJsonValue(QStringLiteral("a/b"))};
        QCOMPARE(JSONCoding::serialize(JSONCoding::encodeValue(values)), QByteArray(R"([1,"a/b"])"));
        QCOMPARE(JSONCoding::serialize(QJsonValue(QStringLiteral("ñ"))), QByteArray("\"ñ\""));
    }

    void shouldNameWhatDoesNotFit_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("description");
        QTest::newRow("missing key") << QByteArray(
            R"({"itmDone":true,"itmCount":1,"itmDueDate":"2026-11-21T09:00:00Z"})")
                                     << QStringLiteral("No value associated with key \"itmName\".");
        QTest::newRow("number for a boolean")
            << QByteArray(R"({"itmName":"a","itmDone":1,"itmCount":1,"itmDueDate":"2026-11-21T09:00:00Z"})")
            << QStringLiteral("\"itmDone\": expected a boolean but found a number instead.");
        QTest::newRow("null for a string")
            << QByteArray(R"({"itmName":null,"itmDone":true,"itmCount":1,"itmDueDate":"2026-11-21T09:00:00Z"})")
            << QStringLiteral("\"itmName\": expected a string but found null instead.");
        QTest::newRow("fraction for a whole number")
            << QByteArray(R"({"itmName":"a","itmDone":true,"itmCount":1.5,"itmDueDate":"2026-11-21T09:00:00Z"})")
            << QStringLiteral("\"itmCount\": expected a whole number but found a number instead.");
        QTest::newRow("date with fractions")
            << QByteArray(R"({"itmName":"a","itmDone":true,"itmCount":1,"itmDueDate":"2026-11-21T09:00:00.5Z"})")
            << QStringLiteral("\"itmDueDate\": Expected date string to be ISO8601-formatted.");
        QTest::newRow("array for an object")
            << QByteArray("[]") << QStringLiteral("Expected an object but found an array instead.");
        QTest::newRow("empty body") << QByteArray()
                                    << QStringLiteral("The given data was not valid JSON: it is empty.");
        QTest::newRow("two values") << QByteArray("{},{}")
                                    << QStringLiteral("The given data was not valid JSON: more than one value.");
    }

    void shouldNameWhatDoesNotFit()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, description);
        QCOMPARE(decodingFailure(json), description);
    }

    void shouldPointAtTheFailingElementOfANestedList()
    {
        const QByteArray json
            = R"({"items":[{"itmName":"a","itmDone":true,"itmCount":1,"itmDueDate":"2026-11-21T09:00:00Z"},)"
              R"({"itmName":"b","itmDone":"no","itmCount":2,"itmDueDate":"2026-11-21T09:00:00Z"}]})";
        try {
            JSONCoding::decode<ListDTO>(json);
            QFAIL("decoded a list with a bad element");
        } catch (const DecodingError& error) {
            QCOMPARE(error.localizedDescription(),
                QStringLiteral("\"items\": [1]: \"itmDone\": expected a boolean but found a string instead."));
        }
    }

    void shouldTakeRawJsonAndFragments()
    {
        QCOMPARE(JSONCoding::decode<QJsonValue>("42"), QJsonValue(42));
        QCOMPARE(JSONCoding::decode<QJsonValue>(" \"text\" "), QJsonValue(QStringLiteral("text")));
        QCOMPARE(JSONCoding::decode<QJsonArray>("[1,2]").size(), 2);
        QCOMPARE(JSONCoding::decode<QJsonObject>(R"({"a":1})").value(QLatin1String("a")), QJsonValue(1));
        QVERIFY_THROWS_EXCEPTION(DecodingError, JSONCoding::decode<QJsonArray>("{}"));
        // Closing the wrapper early must not smuggle a second value through.
        QVERIFY_THROWS_EXCEPTION(DecodingError, JSONCoding::decode<QJsonValue>("1],[2"));
        // Parser messages are Qt's own; what matters is that a proxy's HTML page is not JSON.
        QVERIFY(decodingFailure("<html>").startsWith(QLatin1String("The given data was not valid JSON: ")));
        QCOMPARE(JSONCoding::decode<std::vector<QJsonValue>>("[true,null]").size(), std::size_t(2));
    }

    void shouldWriteIdentifiersUpperCase()
    {
        const QUuid id(QStringLiteral("{6f1c2e6a-3b7d-4c1e-9a2b-0d4e5f6a7b8c}"));
        QCOMPARE(JSONCoding::encodeUUID(id), QStringLiteral("6F1C2E6A-3B7D-4C1E-9A2B-0D4E5F6A7B8C"));
    }
};

TOLVANE_TEST_MAIN(JSONCodingTest)
#include "JSONCodingTest.moc"
