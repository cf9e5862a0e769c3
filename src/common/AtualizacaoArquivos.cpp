#include "common/AtualizacaoArquivos.h"

#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace tv {

namespace {

constexpr std::string_view catalogo = "\\TORVA_TramadorValidador";
constexpr std::string_view pastaEsquemas = "\\XSD";

/// A file's name in two: what stands before its last point and what stands behind it.
struct NomeExtensao {
    std::string nome;
    std::string extensao;
};

NomeExtensao divide(const std::string& nome) {
    const std::size_t ponto = nome.rfind('.');
    return ponto == std::string::npos ? NomeExtensao{nome, {}}
                                      : NomeExtensao{nome.substr(0, ponto), nome.substr(ponto + 1)};
}

/// A recorded name below a folder.
fs::path em(const fs::path& pasta, std::string_view nome) {
    return pasta / files::fromPortable(nome).relative_path();
}

/// A name with a "\\" in it would lead elsewhere as a recorded name, so it is none.
bool ehEsquema(const fs::path& arquivo) {
    const std::string nome = files::toText(arquivo.filename());
    const std::string extensao = text::upper(divide(nome).extensao);
    return (extensao == "XSL" || extensao == "XSD") && !text::contains(nome, "\\");
}

/// By name as people read it, capitals beside small letters, so that every file system gives one order.
bool vemAntes(const fs::path& a, const fs::path& b) {
    const std::string primeiro = text::foldKey(files::toText(a.filename()));
    const std::string segundo = text::foldKey(files::toText(b.filename()));
    return primeiro != segundo ? primeiro < segundo : a < b;
}

std::vector<fs::path> esquemasDe(const fs::path& pasta) {
    std::error_code falha;
    std::vector<fs::path> esquemas;
    for (fs::directory_iterator item(pasta, falha), fim; !falha && item != fim; item.increment(falha)) {
        std::error_code ignorada;
        if (item->is_regular_file(ignorada) && ehEsquema(item->path())) {
            esquemas.push_back(item->path());
        }
    }
    if (falha) {
        throw Error(errc::pathNotFound, "AtualizacaoArquivos",
                    "A pasta não pode ser lida: " + files::toText(pasta));
    }
    std::sort(esquemas.begin(), esquemas.end(), vemAntes);
    return esquemas;
}

} // namespace

AtualizacaoArquivos::AtualizacaoArquivos(fs::path aplicacao, fs::path raiz)
    : aplicacao_(std::move(aplicacao))
    , raiz_(std::move(raiz)) {
    const DateTime agora = clock::now();
    sufixo_ = "_" + format::format(agora, "YYYYMMDD") + "_" + format::format(agora, "HHNNSS");
}

void AtualizacaoArquivos::instala(const fs::path& origem) {
    const fs::path novoCatalogo = files::findNoCase(origem, std::string(catalogo) + ".xml");
    if (files::exists(novoCatalogo)) {
        instalaCatalogo(novoCatalogo);
    }
    for (const fs::path& esquema : esquemasDe(origem)) {
        instalaEsquema(esquema);
    }
}

void AtualizacaoArquivos::instalaCatalogo(const fs::path& novo) {
    clsArquivo arquivo{std::string(catalogo) + ".xml", std::string(catalogo) + sufixo_ + ".xml"};
    files::move(files::findNoCase(aplicacao_, arquivo.nomeInstalado), em(aplicacao_, arquivo.nomeBackup));
    files::move(novo, em(aplicacao_, arquivo.nomeInstalado));
    registra(std::move(arquivo));
}

void AtualizacaoArquivos::instalaEsquema(const fs::path& novo) {
    const fs::path pasta = files::findNoCase(aplicacao_, pastaEsquemas);
    const std::string nome = files::toText(novo.filename());
    const fs::path instalado = files::findNoCase(pasta, nome);
    if (files::exists(instalado)) {
        const auto [base, extensao] = divide(nome);
        // No point before the extension: a kept file is no schema any more, and no later update takes it.
        const std::string nomeBackup = base + sufixo_ + text::upper(extensao);
        const std::string prefixo = std::string(pastaEsquemas) + "\\";
        files::move(instalado, pasta / files::fromPortable(nomeBackup));
        registra({prefixo + nome, prefixo + nomeBackup});
    }
    files::move(novo, pasta / novo.filename());
}

void AtualizacaoArquivos::desfaz() const {
    for (const clsArquivo& arquivo : arquivos_) {
        files::remove(em(raiz_, arquivo.nomeInstalado));
        files::move(em(raiz_, arquivo.nomeBackup), em(raiz_, arquivo.nomeInstalado));
    }
}

void AtualizacaoArquivos::registra(clsArquivo arquivo) {
    arquivos_.Add(std::move(arquivo), std::to_string(arquivos_.Count() + 1));
}

} // namespace tv
