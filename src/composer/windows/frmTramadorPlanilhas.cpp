#include "common/windows/Espera.h"
#include "common/windows/FileOperations.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "composer/windows/frmTramador.h"
#include "logging/Routine.h"
#include "platform/Files.h"
#include "spreadsheet/clsPlanilhaExcel.h"
#include "spreadsheet/windows/TelaDePlanilhas.h"

/// Documents out to workbooks and back.
namespace tv {

using mensagem::Icone;

void frmTramador::exportarExcel() {
    exportarPlanilha(paraQt(documento_.estado.arquivo));
}

/// The workbooks of an export never bear the document's own name, so the question comes up only where such a
/// workbook got there by other means.
void frmTramador::exportarPlanilha(const QString& arquivo) {
    guarded("frmTramador.exportarPlanilha", [&] {
        TelaDePlanilhas tela;
        clsPlanilhaExcel planilha(&tela);
        planilha.tag = documento_.boleto()->getTag();
        planilha.arquivo = paraCaminho(arquivo).string();
        const bool exportado = files::exists(clsPlanilhaExcel::caminhoPlanilha(planilha.arquivo));
        if (!exportado ||
            mensagem::pergunta(QStringLiteral("Este arquivo já foi exportado, deseja exportar novamente?"),
                               Icone::Pergunta, QStringLiteral("Tramador Veldor"))) {
            planilha.OpenPlan(planilha.arquivo, "");
        }
    });
}

void frmTramador::importarExcel() {
    importarPlanilha(FileOperations::abrePlanilha(this));
}

void frmTramador::importarPlanilha(const QString& caminho) {
    guarded("frmTramador.importarPlanilha", [&] {
        TelaDePlanilhas tela;
        clsPlanilhaExcel planilha(&tela);
        const std::string origem = paraCaminho(caminho).string();
        const std::string xml = clsPlanilhaExcel::caminhoXml(origem);
        planilha.tag = documento_.boleto()->getTag();
        if (files::exists(xml)) {
            mensagem::mostra(QStringLiteral("O arquivo: ") + caminho +
                                 QStringLiteral(" já fo importado para planilha!"),
                             Icone::Critico, QStringLiteral("Tramador"));
            return;
        }
        {
            const Espera espera;
            planilha.ImportarPlanilha(origem);
        }
        if (files::exists(xml)) {
            abrirBoleto(caminhoQt(xml));
        }
    });
}

} // namespace tv
