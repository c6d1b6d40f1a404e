// 1,000 sequential GETs of a small JSON array on loopback: through APIClient with the network log
// on and off, and with bare libcurl on one reused handle as the floor.
//
//     bench_api_client --benchmark_repetitions=5
#include "networking/APIClient.h"
#include "networking/WithTimeout.h"
#include "support/http/HttpTestServer.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int requestsPerRun = 1000;
const QByteArray items = R"([{"id":1,"name":"Inbox"},{"id":2,"name":"Home"},{"id":3,"name":"Work"}])";
const QByteArray token = "bench-token";

HttpTestServer& server()
{
    static HttpTestServer instance([](const RecordedRequest&) {
        FakeResponse response;
        response.body = items;
        return response;
    });
    return instance;
}

class BenchToken final : public AuthTokenProvider {
public:
    QString token() override { return QString::fromLatin1(::token); }
};

size_t discard(char*, size_t size, size_t count, void* received)
{
    *static_cast<size_t*>(received) += size * count;
    return size * count;
}

void BM_BareCurl(benchmark::State& state)
{
    const QByteArray url = server().url().toEncoded() + "/v0/items";
    CURL* curl = curl_easy_init();
    curl_slist* headers = curl_slist_append(nullptr, "Content-Type: application/json");
    headers = curl_slist_append(headers, ("Authorization: Bearer " + token).constData());
    size_t received = 0;
    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &discard);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &received);
    for (auto _ : state) {
        if (curl_easy_perform(curl) != CURLE_OK)
            state.SkipWithError("request failed");
    }
    benchmark::DoNotOptimize(received);
    curl_slist_free_all(headers);
    curl_easy_cleanup(curl);
}

// What the token's time limit costs on each request: the hand-over to a worker and back.
void BM_WithTimeoutRace(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(withTimeout(15, [] { return 1; }));
}

// The transport alone, without token, URL building, logging or decoding.
void BM_UrlSession(benchmark::State& state)
{
    UrlRequest request;
    request.url = QUrl(server().url().toString() + QStringLiteral("/v0/items"));
    request.setValue("Content-Type", "application/json");
    request.setValue("Authorization", "Bearer " + token);
    const UrlSession session = UrlSession::shared();
    for (auto _ : state)
        benchmark::DoNotOptimize(session.send(request).statusCode);
}

void runClient(benchmark::State& state, const APIClient& client)
{
    for (auto _ : state) {
        const QJsonArray array = client.get<QJsonArray>(QStringLiteral("/v0/items"));
        benchmark::DoNotOptimize(array.size());
    }
}

void BM_APIClientLoggingOff(benchmark::State& state)
{
    runClient(state, APIClient(server().url(), std::make_shared<BenchToken>(), UrlSession::shared(), false));
}

void BM_APIClientLoggingOn(benchmark::State& state)
{
    // The records still go through fwrite and fflush to standard output, and to the log file, but
    // standard output is /dev/null here so a terminal's drawing speed is not what gets measured.
    std::fflush(stdout);
    const int saved = ::dup(STDOUT_FILENO);
    const int null = ::open("/dev/null", O_WRONLY);
    ::dup2(null, STDOUT_FILENO);
    runClient(state, APIClient(server().url(), std::make_shared<BenchToken>(), UrlSession::shared(), true));
    std::fflush(stdout);
    ::dup2(saved, STDOUT_FILENO);
    ::close(saved);
    ::close(null);
}

} // namespace

BENCHMARK(BM_BareCurl)->Iterations(requestsPerRun)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_WithTimeoutRace)->Iterations(requestsPerRun)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UrlSession)->Iterations(requestsPerRun)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_APIClientLoggingOff)->Iterations(requestsPerRun)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_APIClientLoggingOn)->Iterations(requestsPerRun)->Unit(benchmark::kMicrosecond);

int main(int argc, char* argv[])
{
    // The log file goes to a scratch data directory, not the user's.
    QTemporaryDir dataHome;
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome.path()));
    QCoreApplication application(argc, argv);
    curl_global_init(CURL_GLOBAL_DEFAULT);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
