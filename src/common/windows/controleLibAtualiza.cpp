#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"
#include "common/AtualizacaoArquivos.h"
#include "common/windows/FileOperations.h"
#include "common/windows/controleLib.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"

#include <optional>

namespace tv::controleLib {

namespace {

/// The folder with the new files; empty when the user leaves the browser.
QString pastaDeAtualizacao() {
    if (objTramadorValidador == nullptr) {
        throw Error(errc::objectNotSet, "controleLib.atualizaSistema", "O catálogo não foi carregado");
    }
    const QString titulo =
        QStringLiteral("Localize os Arquivos de Atualização do ") + paraQt(objTramadorValidador->getTitulo());
    return FileOperations::BrowseFolder(&mdiMain::instancia(), titulo);
}

bool querReiniciar() {
    return mensagem::perguntaAcimaDeTudo(
        QStringLiteral("Todas as janelas serão fechadas. \n\nDeseja reiniciar o sistema agora?"),
        mensagem::Icone::Exclamacao);
}

void reinicia() {
    mdiMain& principal = mdiMain::instancia();
    principal.closeAllWindows();
    biblioteca::iniciaSistema();
    principal.raise();
    principal.activateWindow();
    principal.repaint();
    mensagem::mostra(QStringLiteral("Sistema atualizado com sucesso"));
}

} // namespace

void atualizaSistema() {
    const Routine routine("controleLib.atualizaSistema");
    std::optional<AtualizacaoArquivos> atualizacao;
    try {
        const QString pasta = pastaDeAtualizacao();
        if (text::trim(paraUtf8(pasta)).empty()) {
            return;
        }
        atualizacao.emplace(aplicacao::pasta());
        atualizacao->instala(paraCaminho(pasta));
        if (querReiniciar()) {
            reinicia();
        }
    } catch (const std::exception&) {
        mensagem::mostra(QStringLiteral("Falha na atualização do sistema"), mensagem::Icone::Exclamacao);
        if (atualizacao) {
            atualizacao->desfaz(); // its failure is the caller's
        }
    }
}

} // namespace tv::controleLib
