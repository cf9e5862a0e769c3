// Does for hours what users do in a day, in one process, and watches what the process keeps: memory and open
// files.
//
//   soak [--short] [application folder]
//
// In rounds: validations of every sample, documents opened and saved in the composer, exports and imports.
// Behind the first rounds, which fill what is kept on purpose, memory must stay flat and no file may stay
// open.

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "composer/gravacao.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "spreadsheet/clsPlanilhaExcel.h"
#include "validation/clsValidador.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace tv;

struct Counts {
    int rounds;
    int validations;
    int saves;
    int workbooks;
    int warmUp; ///< Rounds before memory is judged.
};
constexpr Counts whole{100, 500, 20, 5, 10};
constexpr Counts abridged{6, 40, 4, 2, 3};

#ifdef __SANITIZE_ADDRESS__
constexpr bool hasOwnHeap = true; // it keeps what was freed, and finds leaks itself at the end
#else
constexpr bool hasOwnHeap = false;
#endif

constexpr double mebi = 1024.0 * 1024.0;
/// What the process may have more at the end than behind the warm-up.
constexpr double mostGrowthInUse = 0.25 * mebi;
constexpr double mostGrowthResident = 4 * mebi;

struct Kept {
    double inUse = 0;    ///< Bytes that the program holds of the heap.
    double resident = 0; ///< Bytes of the process in memory.
    int files = 0;       ///< Open ones.
};

Kept kept() {
    Kept now;
    ::malloc_trim(0);
    const auto heap = ::mallinfo2();
    now.inUse = static_cast<double>(heap.uordblks + heap.hblkhd);
    std::ifstream statm("/proc/self/statm");
    double pages = 0;
    statm >> pages >> pages;
    statm.close();
    now.resident = pages * static_cast<double>(::sysconf(_SC_PAGESIZE));
    now.files =
        static_cast<int>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
    return now;
}

struct Sample {
    fs::path file;
    std::shared_ptr<const clsBoleto> layout;
    std::string tag;
    bool isSmallAndSound = false;
    bool isSound = false;
};

std::vector<Sample> samplesOf(const clsTramadorValidador& catalog, const fs::path& folder) {
    std::vector<Sample> samples;
    for (const auto& item : fs::recursive_directory_iterator(folder / "amostras")) {
        const std::string name = item.path().filename().string();
        if (item.path().extension() == ".xml") {
            const std::string tag = item.path().parent_path().filename().string();
            samples.push_back({item.path(), catalog.getBoletos().Item(tag), tag,
                               name.starts_with("valido_pequeno"), name.starts_with("valido")});
        }
    }
    std::sort(samples.begin(), samples.end(),
              [](const Sample& a, const Sample& b) { return a.file < b.file; });
    return samples;
}

class Soak {
public:
    Soak(const clsTramadorValidador& catalog, const fs::path& folder)
        : samples_(samplesOf(catalog, folder))
        , work_(fs::temp_directory_path() / ("tv-soak-" + std::to_string(::getpid()))) {
        fs::create_directory(work_);
        std::copy_if(samples_.begin(), samples_.end(), std::back_inserter(small_),
                     [](const Sample& one) { return one.isSmallAndSound; });
    }
    ~Soak() {
        std::error_code ignored;
        fs::remove_all(work_, ignored);
    }
    Soak(const Soak&) = delete;
    Soak& operator=(const Soak&) = delete;

    void validate() {
        const Sample& sample = next(samples_, validations_);
        clsValidador validador;
        const bool valid = validador.isValido(sample.file, sample.layout);
        wrong_ += valid == sample.isSound ? 0 : 1;
    }
    void openAndSave() {
        const Sample& sample = next(small_, saves_);
        Documento documento;
        documento.abrir(sample.layout);
        const bool opened = LeitorBoleto(documento).abre(sample.file);
        const fs::path temporary = files::createTemporary(work_, "kvo");
        montaDocumento(documento).save(temporary, true);
        gravacao::grava(temporary, work_ / "salvo.xml");
        wrong_ += opened ? 0 : 1;
    }
    void exportAndImport() {
        const Sample& sample = next(small_, workbooks_);
        const fs::path document = work_ / "fundo.xml";
        files::writeAll(document, files::readAll(sample.file));
        clsPlanilhaExcel out;
        out.tag = sample.tag;
        out.OpenPlan(document.string(), "");
        for (const std::string& workbook : out.relato().planilhas) {
            clsPlanilhaExcel in;
            in.tag = sample.tag;
            in.ImportarPlanilha(workbook);
            wrong_ += in.relato().falha ? 1 : 0;
        }
        wrong_ += out.relato().falha || out.relato().planilhas.empty() ? 1 : 0;
        for (const auto& item : fs::directory_iterator(work_)) {
            fs::remove(item.path());
        }
    }
    void round(const Counts& counts) {
        for (int i = 0; i < counts.validations; ++i) {
            validate();
        }
        for (int i = 0; i < counts.saves; ++i) {
            openAndSave();
        }
        for (int i = 0; i < counts.workbooks; ++i) {
            exportAndImport();
        }
    }
    int wrong() const noexcept { return wrong_; }
    std::string done() const {
        return std::to_string(validations_) + " validations, " + std::to_string(saves_) + " saves, " +
               std::to_string(workbooks_) + " exports";
    }

private:
    static const Sample& next(const std::vector<Sample>& samples, std::size_t& count) {
        return samples.at(count++ % samples.size());
    }

    std::vector<Sample> samples_;
    std::vector<Sample> small_;
    fs::path work_;
    std::size_t validations_ = 0;
    std::size_t saves_ = 0;
    std::size_t workbooks_ = 0;
    int wrong_ = 0; ///< Operations whose result was another one than expected.
};

void tell(const std::string& when, const Kept& now) {
    std::printf("%-60s in use %8.3f MiB, resident %8.3f MiB, %d files open\n", when.c_str(), now.inUse / mebi,
                now.resident / mebi, now.files);
    std::fflush(stdout);
}

int run(const Counts& counts, const fs::path& folder) {
    aplicacao::setPasta(folder);
    clsTramadorValidador catalog;
    if (!catalog.load(folder.string(), "TORVA_TramadorValidador.xml")) {
        std::cerr << catalog.lastReason() << '\n';
        return 2;
    }
    Soak soak(catalog, folder);
    Kept warm;
    Kept now;
    for (int round = 1; round <= counts.rounds; ++round) {
        soak.round(counts);
        now = kept();
        if (round == counts.warmUp) {
            warm = now;
        }
        if (round == counts.warmUp || round % std::max(1, counts.rounds / 20) == 0) {
            tell(soak.done(), now);
        }
    }
    const bool flat = hasOwnHeap || (now.inUse - warm.inUse <= mostGrowthInUse &&
                                     now.resident - warm.resident <= mostGrowthResident);
    if (!flat) {
        std::cout << "memory grows\n";
    }
    if (now.files != warm.files) {
        std::cout << "files stay open\n";
    }
    if (soak.wrong() > 0) {
        std::cout << soak.wrong() << " operations had another result than expected\n";
    }
    return flat && now.files == warm.files && soak.wrong() == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** values) {
    const std::vector<std::string_view> arguments(values + 1, values + count);
    const bool isShort = std::find(arguments.begin(), arguments.end(), "--short") != arguments.end();
    const bool hasFolder = !arguments.empty() && arguments.back() != "--short";
    return run(isShort ? abridged : whole,
               hasFolder ? fs::path(arguments.back()) : tv::files::executableFolder());
}
