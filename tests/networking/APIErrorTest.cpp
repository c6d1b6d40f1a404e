#include "networking/APIError.h"

#include "networking/APIErrorMessageEnum.h"
#include "support/TestMain.h"

#include <QTest>

Q_DECLARE_METATYPE(APIError)

namespace QTest {
template <> char* toString(const APIError& error)
{
    return qstrdup(error.debugDescription().toUtf8().constData());
}
} // namespace QTest

class APIErrorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldCompareByCaseAndPayload()
    {
        QCOMPARE(APIError::server(500), APIError::server(500));
        QVERIFY(!(APIError::server(500) == APIError::server(409)));
        QCOMPARE(APIError::badRequest(QStringLiteral("x")), APIError::badRequest(QStringLiteral("x")));
        QVERIFY(!(APIError::badRequest(QStringLiteral("x")) == APIError::badRequest(QStringLiteral("y"))));
        // The same text under another case is another error.
        QVERIFY(!(APIError::badRequest(QStringLiteral("x")) == APIError::forbidden(QStringLiteral("x"))));
        QVERIFY(!(APIError::transport(QStringLiteral("x")) == APIError::decoding(QStringLiteral("x"))));
        QCOMPARE(APIError::unauthorized(), APIError::unauthorized());
        QVERIFY(!(APIError::unauthorized() == APIError::notFound()));
        // An empty payload still differs from a case without one.
        QVERIFY(!(APIError::forbidden(QString()) == APIError::unauthorized()));
    }

    void shouldGiveTheRepositoryMessage_data()
    {
        QTest::addColumn<APIError>("error");
        QTest::addColumn<QString>("message");
        const QString missing = QStringLiteral("proyecto no encontrado");
        QTest::newRow("forbidden") << APIError::forbidden(QStringLiteral("sin acceso")) << QStringLiteral("sin acceso");
        QTest::newRow("bad request") << APIError::badRequest(QStringLiteral("URL inválida"))
                                     << QStringLiteral("URL inválida");
        QTest::newRow("server 500") << APIError::server(500) << QStringLiteral("error del servidor (500)");
        QTest::newRow("server 409") << APIError::server(409) << QStringLiteral("error del servidor (409)");
        QTest::newRow("transport") << APIError::transport(QStringLiteral("tiempo de espera agotado al autenticar"))
                                   << QStringLiteral("tiempo de espera agotado al autenticar");
        QTest::newRow("decoding") << APIError::decoding(QStringLiteral("bad json")) << QStringLiteral("bad json");
        QTest::newRow("unauthorized") << APIError::unauthorized() << QStringLiteral("no autorizado");
        QTest::newRow("not found") << APIError::notFound() << missing;
        QTest::newRow("empty forbidden body") << APIError::forbidden(QString()) << QString();
    }

    void shouldGiveTheRepositoryMessage()
    {
        QFETCH(APIError, error);
        QFETCH(QString, message);
        QCOMPARE(APIErrorMessageEnum::message(error, QStringLiteral("proyecto no encontrado")), message);
    }
};

TOLVANE_TEST_MAIN(APIErrorTest)
#include "APIErrorTest.moc"
