#include "validation/windows/frmValidador.h"

#include "common/windows/Espera.h"
#include "common/windows/FileOperations.h"
#include "common/windows/Grade.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Files.h"
#include "platform/text.h"
#include "spreadsheet/clsPlanilhaExcel.h"
#include "spreadsheet/windows/TelaDePlanilhas.h"

#include <QAction>

/// Documents out to workbooks and back, behind keys that the tool bar does not offer.
namespace tv {

namespace {

using mensagem::Icone;

void apagarArquivo(const std::filesystem::path& arquivo) {
    if (files::exists(arquivo)) {
        files::remove(arquivo);
    }
}

} // namespace

// --- out

void frmValidador::btnPlanilha() {
    const int linha = linhaPedida();
    if (linha < 0 || !marcado(linha, lote::coluna::validou)) {
        return;
    }
    if (!marcado(linha, lote::coluna::isValid)) {
        botao(QStringLiteral("btnPlanilha")).setEnabled(false);
        mensagem::mostra(QStringLiteral("Este arquivo não é válido para exportação!"), Icone::Exclamacao);
        return;
    }
    botao(QStringLiteral("btnPlanilha")).setEnabled(true);
    const QPointer<frmValidador> viva(this);
    const QString caminho = FileOperations::abrePlanilha(this);
    if (viva) {
        exportarPlanilha(caminho);
    }
}

void frmValidador::exportarPlanilha(const QString& caminho) {
    bool completo = false;
    const bool exportou =
        guarded("frmValidador.exportarPlanilha", [&] { completo = exportaArquivos(caminho); });
    if (!exportou) {
        mensagem::mostra(QStringLiteral("Falha na exportação dos dados!"), Icone::Critico);
    } else if (completo) {
        mensagem::mostra(QStringLiteral("Arquivo gerado com sucesso!"), Icone::Informacao);
    }
}

/// The files of all rows, in their order. What is handed on is the chosen path, not the row's file. False
/// when a file is not of this layout: that ends the export, which says so and nothing more.
bool frmValidador::exportaArquivos(const QString& caminho) {
    TelaDePlanilhas tela;
    clsPlanilhaExcel planilha(&tela);
    planilha.tag = boleto_->getTag();
    const std::string destino = paraCaminho(caminho).string();
    for (int linha = 0; linha < modelo().rowCount(); ++linha) {
        const Value arquivo = modelo().valor(linha, lote::coluna::arquivo);
        if (isNull(arquivo) || defaultText(arquivo).empty()) {
            continue;
        }
        planilha.arquivo = text::trim(defaultText(arquivo));
        apagarArquivo(destino);
        const std::string secoes = clsPlanilhaExcel::getSecoes(planilha.arquivo, planilha.tag);
        if (secoes.empty()) {
            mensagem::mostra(QStringLiteral("Verifique a versão do arquivo selecionado!"), Icone::Exclamacao);
            return false;
        }
        planilha.OpenPlan(destino, secoes);
    }
    return true;
}

// --- back

void frmValidador::btnImportarPlanilha() {
    const QPointer<frmValidador> viva(this);
    const QString caminho = FileOperations::abrePlanilha(this);
    if (viva) {
        importarPlanilha(caminho);
    }
}

void frmValidador::importarPlanilha(const QString& caminho) {
    guarded("frmValidador.importarPlanilha", [&] {
        const Espera espera;
        TelaDePlanilhas tela;
        clsPlanilhaExcel planilha(&tela);
        planilha.tag = boleto_->getTag();
        const std::string origem = paraCaminho(caminho).string();
        apagarArquivo(clsPlanilhaExcel::caminhoXml(origem));
        planilha.ImportarPlanilha(origem);
        adicionarArquivo(caminho);
    });
}

/// The workbook's document takes the place of its row, even if it could not be made.
void frmValidador::adicionarArquivo(const QString& caminho) {
    const std::string documento(text::trim(clsPlanilhaExcel::caminhoXml(paraUtf8(caminho))));
    status(QStringLiteral("Adicionando boletos ..."));
    const auto registros = modelo().dados()->Clone();
    lote::substitui(*registros, documento);
    modelo().setImagem(modelo().linhaDoNumero(registros->currentRow()), lote::coluna::boleto,
                       QStringLiteral("imgBoleto"));
    mostraContagem();
}

} // namespace tv
