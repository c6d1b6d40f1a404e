#include "support/server/ServerBackend.h"

#include "Api.h"
#include "Database.h"
#include "HttpFetch.h"
#include "HttpServer.h"
#include "Log.h"
#include "Migrations.h"
#include "TokenVerifier.h"
#include "support/SettableClock.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/postgres/PostgresCluster.h"
#include "wire/login/UserDTOs.h"

namespace {

class SubjectToken final : public AuthTokenProvider {
public:
    explicit SubjectToken(QString token)
        : m_token(std::move(token))
    {
    }
    QString token() override { return m_token; }

private:
    QString m_token;
};

} // namespace

struct ServerBackend::Parts {
    Parts(const QString& clientId, std::shared_ptr<const Clock> clock)
        : clientId(clientId)
        , provider(clientId, QString(),
              clock ? std::move(clock) : std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc()))
    {
    }

    QString clientId;
    PostgresCluster cluster;
    LocalIdentityProvider provider;
    std::unique_ptr<ConnectionPool> pool;
    std::unique_ptr<TokenVerifier> verifier;
    std::unique_ptr<Api> api;
    std::unique_ptr<HttpServer> server;
    QString error;
};

ServerBackend::ServerBackend(const QString& clientId, std::shared_ptr<const Clock> clock)
    : m_parts(std::make_unique<Parts>(clientId, std::move(clock)))
{
    Parts& parts = *m_parts;
    slog::setLevel(slog::Level::error);
    if (!parts.cluster.isRunning()) {
        parts.error = QStringLiteral("PostgreSQL: ") + parts.cluster.error();
        return;
    }
    const QString databaseUrl = parts.cluster.createDatabase(QStringLiteral("tolvane"));
    if (databaseUrl.isEmpty()) {
        parts.error = QStringLiteral("PostgreSQL: ") + parts.cluster.error();
        return;
    }
    try {
        parts.pool = std::make_unique<ConnectionPool>(databaseUrl.toStdString(), 4);
        {
            auto connection = parts.pool->acquire();
            applyMigrations(*connection);
        }
        parts.verifier = std::make_unique<TokenVerifier>(parts.provider.discoveryURL().toString().toStdString(),
            std::vector {parts.provider.issuer().toStdString()}, std::vector {clientId.toStdString()},
            [](const std::string& url) { return httpGet(url); });
        parts.api = std::make_unique<Api>(*parts.pool, *parts.verifier);
        HttpServer::Options options;
        options.port = 0;
        options.workers = 4;
        parts.server = std::make_unique<HttpServer>(
            options, [api = parts.api.get()](const ApiRequest& request) { return api->handle(request); });
        parts.server->start();
    } catch (const std::exception& error) {
        parts.error = QStringLiteral("tolvane-server: ") + QString::fromLocal8Bit(error.what());
        parts.server.reset();
    }
}

ServerBackend::~ServerBackend()
{
    if (m_parts->server)
        m_parts->server->stop();
}

bool ServerBackend::isRunning() const
{
    return m_parts->server != nullptr;
}

QString ServerBackend::error() const
{
    return m_parts->error;
}

QUrl ServerBackend::baseURL() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_parts->server->port()));
}

LocalIdentityProvider& ServerBackend::identityProvider()
{
    return m_parts->provider;
}

QString ServerBackend::token(const QString& subject)
{
    return m_parts->provider.idTokenFor({subject, subject + QStringLiteral("@example.org"), subject, {}, {}});
}

APIClient ServerBackend::client(const QString& subject)
{
    return APIClient(baseURL(), std::make_shared<SubjectToken>(token(subject)), UrlSession::shared(),
        NetworkLogger(false, std::nullopt, nullptr));
}

QUuid ServerBackend::registerUser(const QString& subject)
{
    const UserResponseDTO user = client(subject).post<UserResponseDTO>(QStringLiteral("/v0/users"),
        UserProfileRequestDTO {subject, QStringLiteral("Tester"), subject + "@example.org"});
    return QUuid::fromString(user.usrId);
}

QStringList ServerBackend::supportMessages(const QUuid& user)
{
    auto connection = m_parts->pool->acquire();
    pqxx::nontransaction db(*connection);
    QStringList messages;
    for (const auto& row : db.exec_params("SELECT message FROM support_messages WHERE user_id = $1 ORDER BY sent_at",
             user.toString(QUuid::WithoutBraces).toStdString()))
        messages.append(QString::fromStdString(row[0].as<std::string>()));
    return messages;
}
