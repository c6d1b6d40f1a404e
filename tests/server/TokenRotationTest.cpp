#include "HttpFetch.h"
#include "Log.h"
#include "TokenVerifier.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/identity/LocalIdentityProvider.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <atomic>

// The server's token check against a real identity provider on loopback whose signing key
// changes, with the monotonic clock of the refetch limit under the test's control.
class TokenRotationTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SettableClock> m_clock;
    std::unique_ptr<LocalIdentityProvider> m_provider;
    std::atomic<qint64> m_elapsedSeconds = 0;
    std::unique_ptr<TokenVerifier> m_verifier;
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();

    QString token(const QString& subject)
    {
        return m_provider->idTokenFor({subject, subject + QStringLiteral("@example.org"), subject, {}, {}});
    }

    std::optional<std::string> subject(const QString& token)
    {
        return m_verifier->subject(token.toStdString(), std::chrono::system_clock::now());
    }

    // A token whose header names a key id nobody published; the rest is a real token's.
    static QString withKeyId(const QString& token, const QString& keyId)
    {
        const QByteArray header = QJsonDocument(
            QJsonObject {{QStringLiteral("alg"), QStringLiteral("RS256")}, {QStringLiteral("kid"), keyId}})
                                      .toJson(QJsonDocument::Compact)
                                      .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
        return QString::fromLatin1(header) + token.mid(token.indexOf(QLatin1Char('.')));
    }

    void passRefetchInterval() { m_elapsedSeconds += TokenVerifier::minimumRefetchInterval.count(); }

private Q_SLOTS:
    void init()
    {
        slog::setLevel(slog::Level::error);
        m_clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
        m_provider = std::make_unique<LocalIdentityProvider>(QStringLiteral("rotation-test"), QString(), m_clock);
        m_elapsedSeconds = 0;
        m_verifier = std::make_unique<TokenVerifier>(
            m_provider->discoveryURL().toString().toStdString(), std::vector {m_provider->issuer().toStdString()},
            std::vector<std::string> {"rotation-test"}, [](const std::string& url) { return httpGet(url); },
            [this] { return m_start + std::chrono::seconds(m_elapsedSeconds.load()); });
    }

    void cleanup()
    {
        m_verifier.reset();
        m_provider.reset();
    }

    void rotatedKey_isTakenAfterOneRefetchAndTheRetiredOneRefused()
    {
        const QString ada = token(QStringLiteral("ada"));
        // Signed with the first key as well, but not shown to the server until that key is gone.
        const QString unseenOld = token(QStringLiteral("bob"));
        QCOMPARE(subject(ada), std::optional<std::string>("ada"));
        QCOMPARE(m_provider->jwksFetches(), 1);

        m_provider->rotateSigningKey();
        const QString carol = token(QStringLiteral("carol"));
        QVERIFY(carol.section(QLatin1Char('.'), 0, 0) != ada.section(QLatin1Char('.'), 0, 0));
        passRefetchInterval();
        QCOMPARE(subject(carol), std::optional<std::string>("carol"));
        QCOMPARE(m_provider->jwksFetches(), 2);
        // Known now: no further fetch.
        QCOMPARE(subject(token(QStringLiteral("carol"))), std::optional<std::string>("carol"));
        QCOMPARE(m_provider->jwksFetches(), 2);

        // A token that passed every check stays believed until it expires, whatever happens to
        // its key afterwards; one never seen, signed with the retired key, no longer passes.
        QCOMPARE(subject(ada), std::optional<std::string>("ada"));
        QCOMPARE(subject(unseenOld), std::nullopt);
        QCOMPARE(m_provider->jwksFetches(), 2);
        // Nor after the provider has been asked again.
        passRefetchInterval();
        QCOMPARE(subject(unseenOld), std::nullopt);
        QCOMPARE(m_provider->jwksFetches(), 3);
    }

    void floodOfUnknownKeyIds_fetchesAtMostOncePerInterval()
    {
        const QString ada = token(QStringLiteral("ada"));
        QCOMPARE(subject(ada), std::optional<std::string>("ada"));
        QCOMPARE(m_provider->jwksFetches(), 1);

        for (int i = 0; i < 200; ++i)
            QCOMPARE(subject(withKeyId(token(QStringLiteral("mallory")), QStringLiteral("made-up-%1").arg(i))),
                std::nullopt);
        QCOMPARE(m_provider->jwksFetches(), 1);

        // Once the interval has passed, one unknown id may look again, and only one.
        passRefetchInterval();
        for (int i = 0; i < 50; ++i)
            QCOMPARE(
                subject(withKeyId(token(QStringLiteral("mallory")), QStringLiteral("other-%1").arg(i))), std::nullopt);
        QCOMPARE(m_provider->jwksFetches(), 2);

        // The published key keeps working throughout, and a rotation right after a refetch waits
        // for the interval before the new key is fetched.
        QCOMPARE(subject(token(QStringLiteral("ada"))), std::optional<std::string>("ada"));
        m_provider->rotateSigningKey();
        const QString next = token(QStringLiteral("ada"));
        QCOMPARE(subject(next), std::nullopt);
        QCOMPARE(m_provider->jwksFetches(), 2);
        passRefetchInterval();
        QCOMPARE(subject(next), std::optional<std::string>("ada"));
        QCOMPARE(m_provider->jwksFetches(), 3);
    }
};

TOLVANE_TEST_MAIN(TokenRotationTest)
#include "TokenRotationTest.moc"
