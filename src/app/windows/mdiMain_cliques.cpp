// What the main window does when a tool is clicked.
#include "app/windows/mdiMain.h"

#include "app/Aplicacao.h"
#include "app/Ladrilhos.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/ferramentasPrincipais.h"
#include "common/windows/Janela.h"
#include "common/windows/controleLib.h"
#include "common/windows/frmAbout.h"
#include "common/windows/textoQt.h"
#include "editor/windows/WindowsAPI.h"
#include "logging/Routine.h"
#include "validation/biblioteca.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include <algorithm>
#include <array>

namespace tv {

namespace {

using namespace ferramenta;

/// The layout whose tag stands behind the first `prefixo` characters of an identifier.
const std::shared_ptr<const clsBoleto>& layoutDe(const QString& identificador, QLatin1String prefixo) {
    if (objTramadorValidador == nullptr) {
        throw Error(errc::objectNotSet, "objTramadorValidador", "O catálogo não foi carregado");
    }
    return objTramadorValidador->getBoletos().Item(paraUtf8(identificador.mid(prefixo.size())));
}

/// Windows that take part in an arrangement, in their usual size.
QList<QMdiSubWindow*> janelasArranjaveis(const QMdiArea& area) {
    QList<QMdiSubWindow*> janelas;
    const auto todas = area.subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow* moldura : todas) {
        if (moldura->isVisible() && !moldura->isMinimized()) {
            moldura->showNormal();
            janelas << moldura;
        }
    }
    return janelas;
}

ladrilhos::Tamanho maiorMinimo(const QList<QMdiSubWindow*>& janelas) {
    ladrilhos::Tamanho minimo;
    for (const QMdiSubWindow* moldura : janelas) {
        const QSize este = moldura->minimumSizeHint().expandedTo(moldura->minimumSize());
        minimo.largura = std::max(minimo.largura, este.width());
        minimo.altura = std::max(minimo.altura, este.height());
    }
    return minimo;
}

} // namespace

void mdiMain::clica(const QString& identificador) {
    guarded([&] { return "mdiMain.toolbar_ToolClick(" + paraUtf8(identificador) + ")"; },
            [&] { executa(identificador); });
}

void mdiMain::executa(const QString& identificador) {
    struct Linha {
        QLatin1String identificador;
        void (*acao)(mdiMain& principal);
    };
    static constexpr std::array linhas{
        Linha{atualizacaoID, [](mdiMain&) { controleLib::atualizaSistema(); }},
        Linha{tramadorButtonID, [](mdiMain& principal) { principal.selectTramador(); }},
        Linha{validadorButtonID, [](mdiMain& principal) { principal.selectValidador(); }},
        Linha{hlpAbout, [](mdiMain& principal) { principal.mostraSobre(); }},
        Linha{hlpContent, [](mdiMain& principal) { principal.mostraAjuda(); }},
        Linha{btnFrmCascata, [](mdiMain& principal) { principal.arranja(Arranjo::Cascata); }},
        Linha{btnFrmLadoaLadoHorizontal,
              [](mdiMain& principal) { principal.arranja(Arranjo::LadoALadoHorizontal); }},
        Linha{btnFrmLadoaLadoVertical,
              [](mdiMain& principal) { principal.arranja(Arranjo::LadoALadoVertical); }},
        Linha{btnFecharJanelas, [](mdiMain& principal) { principal.closeAllWindows(); }},
        Linha{appClose, [](mdiMain&) { biblioteca::closeApplication(); }},
    };
    const auto* linha = std::find_if(linhas.begin(), linhas.end(), [&](const Linha& candidata) {
        return candidata.identificador == identificador;
    });
    if (linha != linhas.end()) {
        linha->acao(*this);
    } else if (identificador.startsWith(tramador_)) {
        abrirTramador(layoutDe(identificador, tramador_));
    } else if (identificador.startsWith(validador_)) {
        abrirValidador(layoutDe(identificador, validador_));
    } else if (identificador.startsWith(janela_)) {
        trazJanela(identificador);
    }
}

void mdiMain::trazJanela(const QString& identificador) {
    Janela& janela = *janelas_.Item(paraUtf8(identificador));
    if (QWidget* moldura = janela.parentWidget(); moldura != nullptr && moldura->isMinimized()) {
        moldura->showNormal();
    }
    janela.ZOrder();
    janela.Refresh();
}

void mdiMain::mostraSobre() {
    if (sobre_ == nullptr || !sobre_->isVisible()) { // a closed one waits for its deletion
        sobre_ = new frmAbout(this);
        sobre_->setAttribute(Qt::WA_DeleteOnClose);
    }
    sobre_->show();
    sobre_->raise();
    sobre_->activateWindow();
}

void mdiMain::mostraAjuda() {
    const std::filesystem::path pagina = aplicacao::arquivo("\\help.html");
    if (biblioteca::transformFile(aplicacao::arquivo("\\TORVA_TramadorValidador.xml"),
                                  aplicacao::arquivo("\\XSD\\help.xsl"), pagina)) {
        WindowsAPI::abreDocumento(caminhoQt(pagina));
    }
}

void mdiMain::arranja(Arranjo arranjo) {
    if (arranjo == Arranjo::Cascata) {
        area_->cascadeSubWindows();
        return;
    }
    const QList<QMdiSubWindow*> janelas = janelasArranjaveis(*area_);
    const QSize livre = area_->viewport()->size();
    const auto lugares =
        (arranjo == Arranjo::LadoALadoHorizontal ? ladrilhos::horizontal : ladrilhos::vertical)(
            static_cast<int>(janelas.size()), {livre.width(), livre.height()}, maiorMinimo(janelas));
    for (qsizetype i = 0; i < janelas.size(); ++i) {
        const ladrilhos::Retangulo& lugar = lugares[static_cast<std::size_t>(i)];
        janelas[i]->setGeometry(lugar.x, lugar.y, lugar.largura, lugar.altura);
    }
}

} // namespace tv
