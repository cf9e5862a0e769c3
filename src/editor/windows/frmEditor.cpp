#include "editor/windows/frmEditor.h"

#include "app/windows/frmObjetos.h"
#include "common/windows/Espera.h"
#include "common/windows/GuardaDaJanela.h"
#include "common/windows/frmMensagem.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "editor/windows/BarraSubstituir.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/EditorXML.h"
#include "editor/windows/WindowsAPI.h"
#include "logging/Routine.h"

#include <QLabel>

#include <functional>
#include <map>
#include <utility>

namespace tv {

frmEditor::frmEditor()
    : Janela(QStringLiteral("frmEditor")) {
    montaTela();
    iniciaGuarda();
}

frmEditor::~frmEditor() = default;

QString frmEditor::descricaoDoArquivo() const {
    return QStringLiteral("Arquivo: ") + arquivo_;
}

void frmEditor::abrir(const std::shared_ptr<const Resultados>& resultados,
                      const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo) {
    abreCom(resultados, boleto, arquivo, [this] { carrega(); });
}

void frmEditor::abreCom(const std::shared_ptr<const Resultados>& resultados,
                        const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo,
                        const std::function<void()>& poeTexto) {
    const Espera espera;
    guarded("frmEditor.abrir", [&] {
        frmMensagem progresso;
        progresso.setMsg(QStringLiteral("Abrindo Arquivo XML"), QStringLiteral("Arquivo: ") + arquivo, 0, 3);
        status(QStringLiteral("Abrindo Arquivo XML ..."));
        const QString titulo = QLatin1Char('[') + semBlancos(arquivo) + QLatin1Char(']');
        setWindowTitle(QStringLiteral("Editor de XML ") + titulo);
        proceed([this] { setWindowIcon(frmObjetos::imagem(QStringLiteral("imgEdit"))); });
        if (boleto) {
            lblBoleto_->setText(lblBoleto_->text() + QStringLiteral(" - ") + paraQt(boleto->getNome()) +
                                QStringLiteral(" (") + paraQt(boleto->getVersao()) + QLatin1Char(')'));
        }
        lblTitulo_->setText(lblTitulo_->text() + QStringLiteral(" - ") + titulo);
        lblTitulo_->setToolTip(semBlancos(arquivo));
        buildToolbar();
        boleto_ = boleto;
        arquivo_ = arquivo;
        resultados_ = resultados;
        txtXML_->hide();
        poeTexto();
        posiciona();
        EditorXML::quebraLinhas(*txtXML_, EditorXML::Quebra::Nenhuma);
        setGrid(resultados);
        txtXML_->show();
        progresso.destroy();
    });
    mostra();
    salvo_ = true;
    status(QStringLiteral("Pronto"));
}

/// Puts the file's text into the box. What cannot be read leaves it empty.
void frmEditor::carrega() {
    std::u16string texto;
    try {
        texto = CaixaXML::interno(quebras_.quebra(disco_.le(paraCaminho(semBlancos(arquivo_)))));
    } catch (const std::exception& falha) {
        logFailure(falha);
        texto.clear();
    }
    txtXML_->setTextoInterno(texto);
    pilha_.inicia(Texto(std::move(texto)));
}

// --- the tool bar's keys

void frmEditor::toolbar_ButtonClick(const QString& chave) {
    static const std::map<QString, std::function<void(frmEditor&)>> acoes{
        {QStringLiteral("btnSalvar"), [](frmEditor& janela) { janela.saveBoleto(); }},
        {QStringLiteral("btnImprimir"), [](frmEditor& janela) { janela.imprime(); }},
        {QStringLiteral("btnValidar"), [](frmEditor& janela) { janela.validarBoleto(); }},
        {QStringLiteral("btnFechar"), [](frmEditor& janela) { janela.closeWindow(); }},
        {QStringLiteral("btnAnterior"), [](frmEditor& janela) { janela.moveAchado(-1); }},
        {QStringLiteral("btnProximo"), [](frmEditor& janela) { janela.moveAchado(1); }},
    };
    const auto acao = acoes.find(chave);
    if (acao != acoes.end()) {
        guarded([&] { return "frmEditor.toolbar_ButtonClick(" + paraUtf8(chave) + ")"; },
                [&] { acao->second(*this); });
    }
}

void frmEditor::imprime() {
    constexpr int margem = 720; // half an inch, in twips
    WindowsAPI::PrintRTF(*txtXML_, margem, margem, margem, margem);
}

// --- closing

bool frmEditor::podeFechar() {
    if (validando_) {
        fechaDepois_ = true;
        return false;
    }
    if (!salvo_ && mensagem::pergunta(QStringLiteral("Deseja salvar o boleto?"), mensagem::Icone::Pergunta)) {
        saveBoleto();
        return !salvamentoFalhou_; // a text that was to be saved and could not be stays where it is
    }
    return true;
}

void frmEditor::aoDescarregar() {
    guarda_->larga();
    boleto_.reset();
}

} // namespace tv
