#include "app/PreparoDaPasta.h"

#include "logging/Product.h"
#include "platform/Checksum.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/FileTurn.h"
#include "platform/Folders.h"
#include "platform/format.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace tv {

namespace {

constexpr const char* trava = ".instalacao.trava";
constexpr const char* rascunhos = ".instalacao.nova";

fs::path com(const fs::path& caminho, std::string_view final) {
    fs::path outro = caminho;
    outro += final;
    return outro;
}

/// The folder of the files that are written but not in place; gone with the object.
class Rascunhos {
public:
    explicit Rascunhos(fs::path pasta)
        : pasta_(std::move(pasta)) {
        apaga(); // of a process that was ended
        files::createFolder(pasta_);
    }
    ~Rascunhos() { apaga(); }
    Rascunhos(const Rascunhos&) = delete;
    Rascunhos& operator=(const Rascunhos&) = delete;

private:
    void apaga() const {
        std::error_code ignorado;
        fs::remove_all(pasta_, ignorado);
    }
    fs::path pasta_;
};

enum class Situacao { Falta, Atual, Nossa, Alterada };

/// What stands in a file's place. A link is the user's doing, whatever it leads to.
Situacao situacao(const fs::path& destino, const std::string& soma, const std::set<std::string>& conhecidas) {
    std::error_code ignorado;
    const fs::file_status estado = fs::symlink_status(destino, ignorado);
    if (!fs::exists(estado)) {
        return Situacao::Falta;
    }
    if (!fs::is_regular_file(estado)) {
        return Situacao::Alterada;
    }
    const std::string atual = checksum::sha256(files::readAll(destino));
    if (atual == soma) {
        return Situacao::Atual;
    }
    return conhecidas.contains(atual) ? Situacao::Nossa : Situacao::Alterada;
}

/// What may stand in the folder when the steps are done or half done.
template<typename Passos>
Manifesto aCaminho(const Manifesto& antes, const Passos& passos) {
    Manifesto manifesto = antes;
    manifesto.origem.clear();
    for (const auto& passo : passos) {
        if (!passo.oferta) {
            manifesto.arquivos[passo.nome].insert(passo.soma);
        }
    }
    return manifesto;
}

/// The same when they are done.
template<typename Passos>
Manifesto concluido(const Manifesto& antes, const Passos& passos, const Distribuidos& distribuidos,
                    std::string origem) {
    Manifesto manifesto = antes;
    manifesto.origem = std::move(origem);
    for (const auto& [nome, soma] : distribuidos) {
        manifesto.arquivos[nome] = {soma};
    }
    for (const auto& passo : passos) {
        if (passo.oferta) {
            manifesto.ofertas.insert(passo.nome);
        } else {
            manifesto.ofertas.erase(passo.nome);
        }
    }
    return manifesto;
}

} // namespace

PreparoDaPasta::PreparoDaPasta(fs::path distribuicao, fs::path pasta)
    : distribuicao_(std::move(distribuicao))
    , pasta_(std::move(pasta)) {}

bool PreparoDaPasta::serve(const fs::path& distribuicao) {
    return files::exists(distribuicao / lista) &&
           files::exists(files::findNoCase(distribuicao, product::catalog));
}

std::vector<std::string> PreparoDaPasta::prepara() {
    const std::string texto = files::readAll(distribuicao_ / lista);
    const std::string origem = checksum::sha256(texto);
    if (emDia(leRegistro(), origem)) {
        return {};
    }
    const Distribuidos distribuidos = leDistribuidos(texto);
    files::createFolder(pasta_);
    const FileTurn vez(pasta_ / trava);
    const Manifesto antes = leRegistro();
    if (emDia(antes, origem)) {
        return {}; // somebody else has done it meanwhile
    }
    const std::vector<Passo> passos = planeja(distribuidos, antes);
    const Rascunhos pasta(pasta_ / rascunhos);
    escreve(passos);
    gravaRegistro(aCaminho(antes, passos));
    poe(passos);
    gravaRegistro(concluido(antes, passos, distribuidos, origem));

    std::vector<std::string> oferecidos;
    for (const Passo& passo : passos) {
        if (passo.oferta) {
            oferecidos.push_back(passo.nome);
        }
    }
    return oferecidos;
}

bool PreparoDaPasta::pronta() const {
    return !leRegistro().origem.empty() && files::exists(lugar(product::catalog));
}

std::vector<std::string> PreparoDaPasta::ofertas() const {
    std::vector<std::string> abertas;
    for (const std::string& nome : leRegistro().ofertas) {
        if (files::exists(com(lugar(nome), novo))) {
            abertas.push_back(nome);
        }
    }
    return abertas;
}

void PreparoDaPasta::aceita() {
    const FileTurn vez(pasta_ / trava);
    const Rascunhos pasta(pasta_ / rascunhos);
    const DateTime agora = clock::now();
    const std::string sufixo =
        ".anterior_" + format::format(agora, "YYYYMMDD") + "_" + format::format(agora, "HHNNSS");
    for (const std::string& nome : ofertas()) {
        const fs::path destino = lugar(nome);
        if (files::exists(destino)) {
            escreveInteiro(com(destino, sufixo), files::readAll(destino));
        }
        files::moveOver(com(destino, novo), destino);
    }
    Manifesto manifesto = leRegistro();
    manifesto.ofertas.clear();
    gravaRegistro(manifesto);
}

void PreparoDaPasta::recusa() {
    const FileTurn vez(pasta_ / trava);
    const Rascunhos pasta(pasta_ / rascunhos);
    Manifesto manifesto = leRegistro();
    manifesto.ofertas.clear();
    gravaRegistro(manifesto);
}

Manifesto PreparoDaPasta::leRegistro() const {
    const fs::path arquivo = pasta_ / registro;
    return files::exists(arquivo) ? Manifesto::le(files::readAll(arquivo)) : Manifesto{};
}

void PreparoDaPasta::gravaRegistro(const Manifesto& manifesto) const {
    escreveInteiro(pasta_ / registro, manifesto.texto());
}

void PreparoDaPasta::escreveInteiro(const fs::path& arquivo, const std::string& bytes) const {
    const fs::path inteiro = pasta_ / rascunhos / "inteiro";
    files::replaceWhole(inteiro, bytes);
    files::moveOver(inteiro, arquivo);
}

bool PreparoDaPasta::emDia(const Manifesto& manifesto, const std::string& origem) const {
    return manifesto.origem == origem && files::exists(lugar(product::catalog));
}

std::vector<PreparoDaPasta::Passo> PreparoDaPasta::planeja(const Distribuidos& distribuidos,
                                                           const Manifesto& manifesto) const {
    std::vector<Passo> passos;
    for (const auto& [nome, soma] : distribuidos) {
        const auto achado = manifesto.arquivos.find(nome);
        const std::set<std::string> conhecidas =
            achado == manifesto.arquivos.end() ? std::set<std::string>{} : achado->second;
        const fs::path destino = lugar(nome);
        const Situacao agora = situacao(destino, soma, conhecidas);
        const bool poe = agora == Situacao::Falta || agora == Situacao::Nossa;
        // What was set up last time already is nothing new to somebody who changed it.
        const bool oferece = agora == Situacao::Alterada && !conhecidas.contains(soma);
        if (poe || oferece) {
            passos.push_back({nome, soma, destino, oferece});
        }
    }
    return passos;
}

void PreparoDaPasta::escreve(const std::vector<Passo>& passos) const {
    for (std::size_t i = 0; i < passos.size(); ++i) {
        const std::string bytes = files::readAll(distribuicao_ / files::fromPortable(passos[i].nome));
        if (checksum::sha256(bytes) != passos[i].soma) {
            throw Error(errc::invalidCall, "PreparoDaPasta",
                        "O arquivo distribuído não é o da lista; a instalação está incompleta: " +
                            files::toText(distribuicao_ / files::fromPortable(passos[i].nome)));
        }
        files::replaceWhole(rascunho(i), bytes);
    }
}

void PreparoDaPasta::poe(const std::vector<Passo>& passos) const {
    for (std::size_t i = 0; i < passos.size(); ++i) {
        const Passo& passo = passos[i];
        files::createFolder(passo.destino.parent_path());
        files::moveOver(rascunho(i), passo.oferta ? com(passo.destino, novo) : passo.destino);
    }
}

fs::path PreparoDaPasta::rascunho(std::size_t passo) const {
    return pasta_ / rascunhos / std::to_string(passo);
}

fs::path PreparoDaPasta::lugar(const std::string& nome) const {
    // Step by step: a file that is not there belongs into the folder that is, whatever its letters.
    const fs::path relativo = files::fromPortable(nome);
    const fs::path pasta = files::findNoCase(pasta_, files::toText(relativo.parent_path()));
    return files::findNoCase(pasta, files::toText(relativo.filename()));
}

} // namespace tv
