#include "common/windows/GuardaDaJanela.h"
#include "common/windows/textoQt.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"
#include "platform/Clock.h"

#include <memory>
#include <utility>

/// The unsaved text: how it is kept from time to time, and how it comes back.
namespace tv {

void frmEditor::iniciaGuarda() {
    GuardaDaJanela::Fonte fonte;
    fonte.temTrabalho = [this] { return !salvo_ && !descarregada(); };
    fonte.prepara = [](const std::function<bool()>&) { return true; };
    fonte.versao = [this] { return mudancas_; };
    fonte.etiqueta = [this] {
        return EtiquetaDeTrabalho{"frmEditor", boleto_ ? boleto_->getTag() : std::string(),
                                  paraUtf8(arquivo_), clock::now()};
    };
    fonte.conteudo = [this] {
        return [retrato = retrato()] {
            return PecasDeTrabalho{std::make_shared<const std::string>(retrato.bytes())};
        };
    };
    guarda_ = new GuardaDaJanela(std::move(fonte), this);
}

/// Shares the text with the states of the stack, so it costs nothing.
RetratoTexto frmEditor::retrato() const {
    return {pilha_.atual(), txtXML_->SelStart(), txtXML_->SelLength(), quebras_.forcada(), disco_};
}

bool frmEditor::retoma(const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo,
                       std::string_view conteudo) {
    RetratoTexto guardado;
    const bool voltou = guarded(
        "frmEditor.retoma", [&] { guardado = RetratoTexto::le(conteudo, paraCaminho(semBlancos(arquivo))); });
    if (!voltou) {
        closeWindow();
        return false;
    }
    abreCom(nullptr, boleto, arquivo, [&] {
        disco_ = guardado.arquivo;
        quebras_.retoma(guardado.quebraForcada);
        txtXML_->setTextoInterno(guardado.texto.inteiro());
        pilha_.inicia(guardado.texto);
    });
    txtXML_->seleciona(guardado.inicioSelecao, guardado.tamanhoSelecao);
    txtXML_->centerCursor();
    salvo_ = false;
    return true;
}

} // namespace tv
