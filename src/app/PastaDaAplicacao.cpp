#include "app/PastaDaAplicacao.h"

#include "app/Aplicacao.h"
#include "app/PreparoDaPasta.h"
#include "logging/Product.h"
#include "platform/Error.h"
#include "platform/Folders.h"
#include "platform/UserFolders.h"

namespace fs = std::filesystem;

namespace tv::pastaDaAplicacao {

namespace {

bool temCatalogo(const fs::path& pasta) {
    return files::exists(files::findNoCase(pasta, product::catalog));
}

/// The folder from which a user's can be made; empty when there is none.
fs::path distribuicao(const fs::path& executavel) {
    const fs::path partilhada = executavel.parent_path() / "share" / product::package;
    for (const fs::path& pasta : {partilhada, executavel}) {
        if (PreparoDaPasta::serve(pasta)) {
            return pasta;
        }
    }
    return {};
}

std::int32_t numeroDe(const std::exception& falha) {
    const auto* erro = dynamic_cast<const Error*>(&falha);
    return erro == nullptr ? errc::pathError : erro->number();
}

} // namespace

Lugares lugares() {
    return {files::executableFolder(), userfolders::data()};
}

Escolha escolhe(const Lugares& lugares) {
    if (temCatalogo(lugares.executavel) && files::isWritableFolder(lugares.executavel)) {
        return {lugares.executavel, {}};
    }
    fs::path origem = distribuicao(lugares.executavel);
    if (origem.empty()) {
        return {lugares.executavel, {}};
    }
    if (lugares.dados.empty()) {
        throw Error(errc::pathNotFound, "PastaDaAplicacao",
                    "O usuário não tem pasta própria: nem XDG_DATA_HOME nem HOME a indicam");
    }
    return {lugares.dados / product::package, std::move(origem)};
}

Preparada prepara(const Lugares& lugares) {
    const Escolha escolha = escolhe(lugares);
    Preparada preparada{escolha.pasta, escolha.distribuicao, {}, {}};
    if (!escolha.distribuicao.empty()) {
        PreparoDaPasta preparo(escolha.distribuicao, escolha.pasta);
        try {
            preparada.oferecidos = preparo.prepara();
        } catch (const std::exception& falha) {
            if (!preparo.pronta()) {
                throw Error(numeroDe(falha), "PastaDaAplicacao",
                            "A pasta da aplicação '" + files::toText(escolha.pasta) +
                                "' não pôde ser preparada: " + falha.what());
            }
            preparada.aviso = falha.what();
        }
    }
    aplicacao::setPasta(preparada.pasta);
    return preparada;
}

} // namespace tv::pastaDaAplicacao
