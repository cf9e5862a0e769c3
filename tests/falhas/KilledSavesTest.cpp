#include "Operations.h"

#include "composer/gravacao.h"
#include "composer/nomeDoArquivo.h"
#include "editor/ArquivoEditado.h"
#include "platform/Workbook.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

/// A process that saves again and again is killed at random moments.
namespace tv::test {
namespace {

namespace fs = std::filesystem;

/// What is saved: the documents of one kind, one after the other, each with its number.
struct Saves {
    /// Saves document number `number` in the place of the one before.
    std::function<void(const fs::path& folder, int number)> save;
    /// The number of the document that is there; -1 when it is lost or cut.
    std::function<int(const fs::path& folder)> savedNumber;
};

int kills() {
    const char* wanted = std::getenv("TV_KILLS"); // NOLINT(concurrency-mt-unsafe): nothing sets it here
    return wanted == nullptr ? 20 : std::max(1, std::atoi(wanted));
}

/// A document of some hundred kilobytes that tells its number at both ends.
std::string numbered(int number) {
    const std::string text = std::to_string(number);
    return "<r n=\"" + text + "\"><t>" + std::string(400'000, 'x') + "</t><n>" + text + "</n></r>";
}

int numberOf(const std::string& document) {
    const std::size_t at = document.find("n=\"");
    const int number = at == std::string::npos ? -1 : std::atoi(document.c_str() + at + 3);
    return document == numbered(number) ? number : -1;
}

[[noreturn]] void saveForEver(const Saves& saves, const fs::path& folder, int number, int ready) {
    for (;; ++number) {
        saves.save(folder, number);
        if (::write(ready, "x", 1) != 1) {
            std::_Exit(1);
        }
    }
}

/// Lets a child save until it is killed, at a moment that nobody chooses. The answer is the number of saves
/// that it had finished.
int killOnce(const Saves& saves, const fs::path& folder, int number, std::mt19937& chance) {
    std::array<int, 2> pipe{};
    EXPECT_EQ(::pipe(pipe.data()), 0);
    const auto begun = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(pipe[0]);
        saveForEver(saves, folder, number, pipe[1]);
    }
    ::close(pipe[1]);
    int finished = 0;
    char mark = 0;
    const auto finishOne = [&] { finished += ::read(pipe[0], &mark, 1) == 1 ? 1 : 0; };
    finishOne();
    // Within about the time of two saves, however long one takes here.
    const auto took = std::chrono::steady_clock::now() - begun;
    const double share = std::uniform_real_distribution<double>(0, 2)(chance);
    std::this_thread::sleep_for(share * took);
    ::kill(child, SIGKILL);
    int state = 0;
    EXPECT_EQ(::waitpid(child, &state, 0), child);
    EXPECT_TRUE(WIFSIGNALED(state)) << "the child ended by itself";
    for (int before = -1; before != finished;) {
        before = finished;
        finishOne();
    }
    ::close(pipe[0]);
    return finished;
}

std::size_t sweepTemporaries(const fs::path& folder) {
    std::vector<fs::path> left;
    for (const auto& item : fs::directory_iterator(folder)) {
        if (item.path().extension() == ".TMP") {
            left.push_back(item.path());
        }
    }
    for (const fs::path& file : left) {
        fs::remove(file);
    }
    return left.size();
}

void killThemAll(const Saves& saves) {
    ::unsetenv(
        "TMPDIR"); // NOLINT(concurrency-mt-unsafe): a disk, where a save has to wait, and no thread runs
    const TemporaryFolder folder;
    const int rounds = kills();
    std::mt19937 chance(20240705);
    int number = 1;
    int finished = 0;
    int midway = 0;
    std::size_t leftOver = 0;
    saves.save(folder.path(), number);
    for (int round = 0; round < rounds; ++round) {
        const int done = killOnce(saves, folder.path(), number + 1, chance);
        const int saved = saves.savedNumber(folder.path());
        // What was finished is there; the one under way may be, or not.
        ASSERT_GE(saved, number + done) << "in round " << round;
        ASSERT_LE(saved, number + done + 1) << "in round " << round;
        finished += done;
        const std::size_t left = sweepTemporaries(folder.path());
        midway += left > 0 ? 1 : 0;
        leftOver += left;
        number = saved;
    }
    std::cout << rounds << " kills, " << finished << " saves finished, " << midway
              << " kills in the midst of one, " << leftOver << " temporary files left over\n";
}

TEST(KilledSaves, TheComposersDocumentIsNeverLostOrCut) {
    const auto destino = [](const fs::path& folder) { return folder / "fundo.xml"; };
    killThemAll({[&](const fs::path& folder, int number) {
                     const fs::path temporario = files::createTemporary(folder, "kvo");
                     files::replaceWhole(temporario, numbered(number));
                     gravacao::grava(temporario, destino(folder));
                 },
                 [&](const fs::path& folder) {
                     const fs::path copia = nomeDoArquivo::copia(destino(folder));
                     const bool copyIsWhole = !fs::exists(copia) || numberOf(files::readAll(copia)) > 0;
                     return copyIsWhole ? numberOf(bytesOf(destino(folder))) : -1;
                 }});
}

TEST(KilledSaves, TheEditorsFileIsNeverLostOrCut) {
    const auto file = [](const fs::path& folder) { return folder / "a.xml"; };
    killThemAll({[&](const fs::path& folder, int number) {
                     if (!fs::exists(file(folder))) {
                         files::writeAll(file(folder), numbered(0));
                     }
                     ArquivoEditado arquivo;
                     arquivo.le(file(folder));
                     const std::string text = numbered(number);
                     arquivo.grava(arquivo.prepara(std::u16string(text.begin(), text.end())));
                 },
                 [&](const fs::path& folder) { return numberOf(bytesOf(file(folder))); }});
}

/// A sheet of some rows, and one more for each save.
TEST(KilledSaves, AWorkbookIsNeverLostOrCut) {
    const auto file = [](const fs::path& folder) { return folder / "a.xls"; };
    const auto insert = [](Workbook& workbook, const std::string& number, const std::string& text) {
        workbook.execute("INSERT INTO t( n, x) VALUES ('" + number + "', '" + text + "') ");
    };
    killThemAll({[&](const fs::path& folder, int number) {
                     const bool isNew = !fs::exists(file(folder));
                     Workbook workbook(file(folder));
                     if (isNew) {
                         workbook.execute("CREATE TABLE t( n varchar(255), x varchar(255)) ");
                         for (int row = 0; row < 1000; ++row) {
                             insert(workbook, "0", std::string(200, 'x') + std::to_string(row));
                         }
                     }
                     insert(workbook, std::to_string(number), "");
                     workbook.close();
                 },
                 [&](const fs::path& folder) {
                     try {
                         const WorkbookTable table = Workbook(file(folder)).select("SELECT * FROM [t$]");
                         const int number = std::stoi(table.rows.back().front().value_or("-1"));
                         return static_cast<int>(table.rows.size()) == 1000 + number ? number : -1;
                     } catch (const Error&) {
                         return -1;
                     }
                 }});
}

} // namespace
} // namespace tv::test
