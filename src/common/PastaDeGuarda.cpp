#include "common/PastaDeGuarda.h"

#include "app/Aplicacao.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/Files.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace tv {

namespace {

constexpr const char* nomeDaPasta = "recuperacao";
constexpr std::string_view extensaoDoTrabalho = ".trabalho";
constexpr std::string_view extensaoParcial = ".parcial";
constexpr std::string_view extensaoDaTrava = ".trava";
constexpr int tentativas = 100;

/// No two of one machine are alike, also when the system gives a process's number again.
std::string nomeNovo() {
    const auto agora = std::chrono::system_clock::now().time_since_epoch();
    return std::to_string(::getpid()) + "-" +
           std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(agora).count());
}

bool tem(const std::string& nome, std::string_view extensao) {
    return std::string_view(nome).ends_with(extensao);
}

/// The program in a file's name; empty for other files.
std::string programaDe(const std::string& nome) {
    if (tem(nome, extensaoDaTrava)) {
        return nome.substr(0, nome.size() - extensaoDaTrava.size());
    }
    const bool isTrabalho = tem(nome, extensaoDoTrabalho) || tem(nome, extensaoParcial);
    const std::size_t fim = nome.find('_');
    return isTrabalho && fim != std::string::npos ? nome.substr(0, fim) : std::string();
}

fs::path pastaDoRegistro() {
    const std::string arquivo = oLogger == nullptr ? std::string() : oLogger->getFilename();
    return arquivo.empty() ? aplicacao::pasta() : fs::path(arquivo).parent_path();
}

bool vencido(const fs::path& arquivo) {
    std::error_code falha;
    const fs::file_time_type instante = fs::last_write_time(arquivo, falha);
    return !falha && fs::file_time_type::clock::now() - instante >
                         std::chrono::hours(24) * PastaDeGuarda::diasDosRecusados;
}

} // namespace

PastaDeGuarda::PastaDeGuarda(fs::path pasta)
    : pasta_(std::move(pasta)) {}

PastaDeGuarda::~PastaDeGuarda() = default;

std::shared_ptr<PastaDeGuarda> PastaDeGuarda::doPrograma() {
    static std::shared_ptr<PastaDeGuarda> atual;
    fs::path pasta = pastaDoRegistro() / nomeDaPasta;
    if (atual == nullptr || atual->pasta() != pasta) {
        atual = std::make_shared<PastaDeGuarda>(std::move(pasta));
    }
    return atual;
}

/// Another program may take the empty folder away between two steps, or look into a lock that is not held
/// yet; then it is tried again.
void PastaDeGuarda::abre() {
    for (int vez = 0; !trava_ && vez < tentativas; ++vez) {
        std::error_code falha;
        fs::create_directories(pasta_, falha);
        const std::string nome = nomeNovo();
        try {
            trava_ = FileLock::take(pasta_ / (nome + std::string(extensaoDaTrava)));
        } catch (const Error& erro) {
            if (erro.number() != errc::pathNotFound || falha) {
                throw;
            }
        }
        programa_ = nome;
    }
    if (!trava_) {
        throw Error(errc::pathError, "PastaDeGuarda", "Erro de acesso à pasta: " + files::toText(pasta_));
    }
}

/// The folder stays where there is something of others in it.
void PastaDeGuarda::fecha() noexcept {
    if (trava_) {
        trava_->remove();
        trava_.reset();
    }
    std::error_code ignorada;
    if (fs::is_directory(pasta_, ignorada)) {
        fs::remove(pasta_, ignorada);
    }
}

fs::path PastaDeGuarda::novoLugar() {
    if (!trava_ || !files::exists(pasta_ / (programa_ + std::string(extensaoDaTrava)))) {
        trava_.reset();
        abre();
    }
    fs::path lugar = pasta_ / (programa_ + "_" + std::to_string(++ultimo_) + std::string(extensaoDoTrabalho));
    lugares_.insert(lugar);
    return lugar;
}

void PastaDeGuarda::libera(const fs::path& lugar) noexcept {
    std::error_code ignorada;
    fs::remove(lugar, ignorada);
    if (lugares_.erase(lugar) > 0 && lugares_.empty()) {
        fecha();
    }
}

void PastaDeGuarda::separa(const fs::path& lugar, std::string_view extensao) {
    fs::path separado = lugar;
    separado.replace_extension(extensao);
    std::error_code falha;
    fs::rename(lugar, separado, falha);
    if (falha) {
        throw Error(errc::pathError, "PastaDeGuarda", "Erro de acesso ao arquivo: " + files::toText(lugar));
    }
    fs::last_write_time(separado, fs::file_time_type::clock::now(), falha); // its days count from here
    libera(lugar);
}

std::vector<fs::path> PastaDeGuarda::arquivos(const std::function<bool(const std::string&)>& serve) const {
    std::vector<fs::path> achados;
    std::error_code falha;
    for (fs::directory_iterator item(pasta_, falha), fim; !falha && item != fim; item.increment(falha)) {
        if (serve(files::toText(item->path().filename()))) {
            achados.push_back(item->path());
        }
    }
    return achados;
}

std::set<std::string> PastaDeGuarda::outrosProgramas() const {
    std::set<std::string> programas;
    for (const fs::path& arquivo :
         arquivos([](const std::string& nome) { return !programaDe(nome).empty(); })) {
        programas.insert(programaDe(files::toText(arquivo.filename())));
    }
    programas.erase(programa_);
    return programas;
}

std::vector<fs::path> PastaDeGuarda::assume() {
    std::vector<fs::path> assumidos;
    for (const std::string& programa : outrosProgramas()) {
        proceed([&] { assumeDe(programa, assumidos); });
    }
    limpa();
    const auto instante = [](const fs::path& arquivo) {
        std::error_code falha;
        return fs::last_write_time(arquivo, falha);
    };
    std::stable_sort(assumidos.begin(), assumidos.end(),
                     [&](const fs::path& a, const fs::path& b) { return instante(a) < instante(b); });
    if (lugares_.empty()) {
        fecha();
    }
    return assumidos;
}

/// Whoever holds the lock of a program may touch its files: itself, or one program after its end.
void PastaDeGuarda::assumeDe(const std::string& programa, std::vector<fs::path>& assumidos) {
    std::optional<FileLock> trava = FileLock::take(pasta_ / (programa + std::string(extensaoDaTrava)));
    if (!trava) {
        return;
    }
    for (const fs::path& arquivo :
         arquivos([&](const std::string& nome) { return programaDe(nome) == programa; })) {
        const std::string nome = files::toText(arquivo.filename());
        if (tem(nome, extensaoParcial)) {
            std::error_code ignorada;
            fs::remove(arquivo, ignorada);
        } else if (tem(nome, extensaoDoTrabalho)) {
            const fs::path lugar = novoLugar();
            std::error_code falha;
            fs::rename(arquivo, lugar, falha);
            if (falha) {
                lugares_.erase(lugar);
            } else {
                assumidos.push_back(lugar);
            }
        }
    }
    trava->remove();
}

void PastaDeGuarda::limpa() const {
    const auto separados =
        arquivos([](const std::string& nome) { return tem(nome, ".recusado") || tem(nome, ".danificado"); });
    for (const fs::path& arquivo : separados) {
        if (vencido(arquivo)) {
            std::error_code ignorada;
            fs::remove(arquivo, ignorada);
        }
    }
}

} // namespace tv
