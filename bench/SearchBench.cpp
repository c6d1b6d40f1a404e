// Search over the heavy account: 100 projects x 10 lists x 100 tasks, and five years of daily
// logbook entries for ten of the projects.
// - loading the index: everything read through the local applications, as the window's search
//   does off the GUI thread each time it opens, and folded;
// - a keystroke: the query of each letter as words are typed into the search line, with the
//   95th percentile and the slowest; and the first letter typed, which looks through everything.
// Meets are left out: they come from the calendar store, whose reading the schedule's benchmarks
// measure. Run inside scripts/with-desktop-session (the stores' keys live in the keyring).
#include "LargeTaskStore.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "screens/search/SearchSource.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmTable.h"
#include "support/ui/AppFixture.h"
#include "tasks/database/BitacoraDatabase.h"
#include "tasks/database/BitacoraEntryRealmModel.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TasksDatabase.h"

#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

const QStringList logWords {QStringLiteral("reunión"), QStringLiteral("revisé"), QStringLiteral("el"),
    QStringLiteral("presupuesto"), QStringLiteral("con"), QStringLiteral("Ana"), QStringLiteral("llamé"),
    QStringLiteral("al"), QStringLiteral("cliente"), QStringLiteral("diseño"), QStringLiteral("pendiente"),
    QStringLiteral("bitácora"), QStringLiteral("mañana"), QStringLiteral("entrega"), QStringLiteral("pruebas"),
    QStringLiteral("avancé"), QStringLiteral("informe"), QStringLiteral("equipo"), QStringLiteral("café")};

struct Account {
    std::unique_ptr<AppFixture> app;
    std::optional<TasksApplicationFactory::Applications> apps;
    QUuid user;
};

Account& account()
{
    static Account* made = [] {
        auto* account = new Account {std::make_unique<AppFixture>(), std::nullopt, {}};
        AppFixture& app = *account->app;
        app.storeLocalUser();
        account->user
            = QUuid::fromString(app.services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const auto factory = [&] {
            return RealmEncryptedConfigurationFactory(
                std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(), [&] {
                    RealmConfiguration defaults;
                    defaults.fileURL = app.directory() + QStringLiteral("/default.realm");
                    return defaults;
                }());
        };
        const auto projects
            = RealmDatabase::open(ProjectsDatabase::make(factory()).dataAs<ProjectsDatabase>()->configuration);
        const auto lists
            = RealmDatabase::open(TaskListsDatabase::make(factory()).dataAs<TaskListsDatabase>()->configuration);
        const auto tasks = RealmDatabase::open(TasksDatabase::make(factory()).dataAs<TasksDatabase>()->configuration);
        fillLargeTaskStore(*projects, *lists, *tasks, account->user);

        // Five years of a few lines a day for the first ten projects.
        const auto logbook
            = RealmDatabase::open(BitacoraDatabase::make(factory()).dataAs<BitacoraDatabase>()->configuration);
        const QList<ProjectEntity> all = *app.services()
                                              .tasksApplications(false)
                                              .dataAs<TasksApplicationFactory::Applications>()
                                              ->projects.list(account->user)
                                              .dataAs<QList<ProjectEntity>>();
        logbook->beginWrite();
        const QDate first = QDate::currentDate().addYears(-5);
        int word = 0;
        for (int p = 0; p < 10 && p < all.size(); ++p) {
            for (QDate day = first; day <= QDate::currentDate(); day = day.addDays(1)) {
                QString text = day.toString(QStringLiteral("d:\n\n• "));
                for (int w = 0; w < 30; ++w)
                    text += logWords.at(word++ % logWords.size())
                        + (w % 10 == 9 ? QStringLiteral("\n• ") : QStringLiteral(" "));
                RealmTable<BitacoraEntryRealmModel>(*logbook).add(
                    BitacoraEntryRealmModel::fromEntity({.bteUserId = account->user,
                        .prjId = all.at(p).prjId,
                        .bteDate = QDateTime(day, QTime(18, 0)),
                        .bteContent = text}));
            }
        }
        logbook->commitWrite();
        account->apps = *app.services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        return account;
    }();
    return *made;
}

std::shared_ptr<SearchIndex> loadIndex()
{
    Account& made = account();
    return std::make_shared<SearchIndex>(
        SearchSource::taskItems(*made.apps, made.user, SearchSource::Range::around(QDate::currentDate())));
}

void BM_LoadIndex(benchmark::State& state)
{
    qsizetype items = 0;
    for (auto _ : state) {
        const std::shared_ptr<SearchIndex> index = loadIndex();
        items = index->items().size();
    }
    state.counters["items"] = double(items);
}

// Words typed letter by letter, each after the line was cleared.
const QStringList typed {QStringLiteral("task 42"), QStringLiteral("project 07"), QStringLiteral("presupuesto ana"),
    QStringLiteral("bitacora"), QStringLiteral("list 3"), QStringLiteral("diseno manana"), QStringLiteral("zzz")};

void BM_Keystroke(benchmark::State& state)
{
    const std::shared_ptr<SearchIndex> index = loadIndex();
    std::vector<double> milliseconds;
    QElapsedTimer clock;
    int found = 0;
    for (auto _ : state) {
        for (const QString& words : typed) {
            for (int length = 1; length <= words.size(); ++length) {
                clock.start();
                const SearchResults results = index->query(words.left(length));
                const double spent = double(clock.nsecsElapsed()) / 1e6;
                milliseconds.push_back(spent);
                found += results.size();
                state.SetIterationTime(spent / 1000);
            }
            index->query(QString());
        }
    }
    benchmark::DoNotOptimize(found);
    std::sort(milliseconds.begin(), milliseconds.end());
    state.counters["p95_ms"] = milliseconds.at(size_t(double(milliseconds.size() - 1) * 0.95));
    state.counters["max_ms"] = milliseconds.back();
    state.counters["keystrokes"] = double(milliseconds.size());
}

// The first letter into an empty line: every item is looked at, nearly all of them match.
void BM_FirstKeystroke(benchmark::State& state)
{
    const std::shared_ptr<SearchIndex> index = loadIndex();
    for (auto _ : state) {
        index->query(QString());
        const SearchResults results = index->query(QStringLiteral("t"));
        benchmark::DoNotOptimize(results.size());
    }
}

// Deleting a letter: the shorter query cannot narrow the last one's results.
void BM_Backspace(benchmark::State& state)
{
    const std::shared_ptr<SearchIndex> index = loadIndex();
    for (auto _ : state) {
        index->query(QStringLiteral("presupuesto ana"));
        const SearchResults results = index->query(QStringLiteral("presupuesto an"));
        benchmark::DoNotOptimize(results.size());
    }
}

} // namespace

BENCHMARK(BM_LoadIndex)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Keystroke)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FirstKeystroke)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Backspace)->Unit(benchmark::kMillisecond);

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
