#include "common/windows/Espera.h"
#include "common/windows/GuardaDaJanela.h"
#include "common/windows/frmMensagem.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"

#include <QPointer>
#include <QTimer>

#include <memory>

/// The way of the text to its file, and the validation of the file.
namespace tv {

namespace {

using mensagem::Icone;

QString caractere(char32_t c) {
    return QString::fromUcs4(&c, 1);
}

/// "1 caractere", "3 caracteres".
QString contagem(std::size_t quantos, const char16_t* um, const char16_t* varios) {
    return QString::number(quantos) + QLatin1Char(' ') + QString::fromUtf16(quantos == 1 ? um : varios);
}

bool perguntaCaracteres(const ArquivoEditado::Preparo& preparo) {
    const TextoGravado& gravado = preparo.gravado;
    return mensagem::pergunta(
        QStringLiteral("A codificação %1, que o arquivo declara, não tem %2 do texto.\n"
                       "O primeiro é \"%3\", na linha %4, coluna %5.\n\n"
                       "Deseja gravar referências no lugar (&#%6;)? Se não, nada será salvo.")
            .arg(paraQt(preparo.codificacao.nome), contagem(gravado.ausentes, u"caractere", u"caracteres"),
                 caractere(gravado.primeiroAusente))
            .arg(gravado.linha)
            .arg(gravado.coluna)
            .arg(static_cast<std::uint32_t>(gravado.primeiroAusente)),
        Icone::Pergunta);
}

} // namespace

/// What the user has to agree to before anything is written. False keeps the file as it is.
bool frmEditor::perguntaAntes() const {
    if (disco_.naoLido()) {
        return mensagem::pergunta(
            QStringLiteral(
                "O arquivo não pôde ser lido ao ser aberto, e o seu conteúdo não está no editor.\n\n"
                "Deseja substituir o arquivo pelo texto do editor?"),
            Icone::Exclamacao);
    }
    if (disco_.mudouNoDisco() &&
        !mensagem::pergunta(
            QStringLiteral("O arquivo foi alterado por outro programa depois de ter sido aberto aqui.\n\n"
                           "Deseja gravar por cima dessas alterações?"),
            Icone::Exclamacao)) {
        return false;
    }
    return !quebras_.forcada() ||
           mensagem::pergunta(
               QStringLiteral("O arquivo tem linhas longas demais, que o editor mostra em partes. "
                              "As quebras entre as partes serão gravadas com o texto.\n\n"
                              "Deseja salvar assim mesmo?"),
               Icone::Exclamacao);
}

/// What a save would change in the text. False keeps the file as it is.
bool frmEditor::perguntaPerdas(const ArquivoEditado::Preparo& preparo) const {
    if (preparo.perdeIlegiveis &&
        !mensagem::pergunta(
            QStringLiteral("O arquivo tem %1 que não se pode ler na codificação %2. "
                           "No lugar, o texto mostra o sinal \"\uFFFD\", e o conteúdo "
                           "desses lugares será perdido.\n\n"
                           "Deseja salvar assim mesmo?")
                .arg(contagem(disco_.ilegiveis(), u"lugar", u"lugares"), paraQt(disco_.codificacao().nome)),
            Icone::Exclamacao)) {
        return false;
    }
    return preparo.gravado.ausentes == 0 || perguntaCaracteres(preparo);
}

void frmEditor::saveBoleto() {
    QString motivo;
    guarded("frmEditor.saveBoleto", [&] {
        try {
            salva();
        } catch (const std::exception& falha) {
            motivo = paraQt(falha.what());
            throw;
        }
    });
    if (!motivo.isEmpty()) {
        mensagem::mostra(QStringLiteral("O arquivo não foi salvo!\n\n") + motivo, Icone::Critico);
    }
    status(QStringLiteral("Pronto"));
}

void frmEditor::salva() {
    salvamentoFalhou_ = false;
    if (semBlancos(arquivo_).isEmpty()) {
        return;
    }
    salvamentoFalhou_ = true; // until it is done
    if (!perguntaAntes()) {
        return;
    }
    auto progresso = std::make_unique<frmMensagem>();
    const auto mostraProgresso = [&] {
        progresso->setMsg(QStringLiteral("Salvando Arquivo XML"), descricaoDoArquivo());
        status(QStringLiteral("Salvando Arquivo XML ..."));
    };
    mostraProgresso();
    const ArquivoEditado::Preparo preparo = [this] {
        const Espera espera;
        return disco_.prepara(txtXML_->texto());
    }();
    if (preparo.perdeIlegiveis || preparo.gravado.ausentes > 0) {
        progresso->destroy();
        if (!perguntaPerdas(preparo)) {
            return;
        }
        progresso = std::make_unique<frmMensagem>();
        mostraProgresso();
    }
    {
        const Espera espera;
        disco_.grava(preparo);
        quebras_ = QuebraLinhas();
        if (preparo.forma) {
            mostraForma(*preparo.forma);
        }
    }
    progresso->destroy();
    salvamentoFalhou_ = false;
    mensagem::mostra(QStringLiteral("Arquivo salvo com sucesso"), Icone::Informacao);
    salvo_ = true;
    guarda_->larga();
}

void frmEditor::validarBoleto() {
    if (validando_) {
        return;
    }
    const QPointer<frmEditor> viva(this);
    guarded("frmEditor.validarBoleto", [this] {
        if (!salvo_) {
            saveBoleto();
        }
        if (salvo_) {
            valida();
        } else {
            mensagem::mostra(QStringLiteral("O arquivo deve ser salvo antes de ser validado!"),
                             Icone::Exclamacao);
        }
    });
    if (viva) {
        status(QStringLiteral("Pronto"));
    }
}

/// A run gives the user interface turns, in which the window may be asked to close, or go with the program.
void frmEditor::valida() {
    const QPointer<frmEditor> viva(this);
    const std::shared_ptr<const clsBoleto> boleto = boleto_; // the run needs it even without the window
    clsValidador validador;
    bool valido = false;
    {
        const Espera espera(Espera::Ponteiro::SetaComAmpulheta);
        frmMensagem progresso;
        progresso.setMsg(QStringLiteral("Validando Arquivo XML"), descricaoDoArquivo());
        status(QStringLiteral("Validando arquivo ..."));
        validando_ = true;
        valido = validador.isValido(paraCaminho(semBlancos(arquivo_)), boleto);
        if (!viva) {
            return;
        }
        validando_ = false;
        progresso.destroy();
    }
    if (fechaDepois_) {
        fechaDepois_ = false;
        QTimer::singleShot(0, this, [this] { closeWindow(); });
        return;
    }
    if (valido) {
        mensagem::mostra(QStringLiteral("Arquivo válido!"), Icone::Informacao);
    }
    setGrid(validador.getResultado());
}

} // namespace tv
