// Other programs see in our workbooks what we wrote, and what they save comes back as the same bytes.

#include "PlanilhasDeTeste.h"

#include "../composer/Amostras.h"
#include "app/Aplicacao.h"

#include <algorithm>
#include <cstdlib>

namespace tv::test {
namespace {

/// Lets LibreOffice read workbooks and save them anew, in the same format, into another folder.
void salvaDeNovo(const std::vector<std::string>& planilhas, const std::filesystem::path& destino) {
    const std::string perfil = destino.string() + "-perfil";
    std::string comando = "HOME='" + perfil +
                          "' soffice --headless --norestore '-env:UserInstallation=file://" + perfil +
                          "' --convert-to 'xls:MS Excel 97' --outdir '" + destino.string() + "'";
    for (const std::string& planilha : planilhas) {
        comando += " '" + planilha + "'";
    }
    comando += " >/dev/null 2>&1";
    ASSERT_EQ(std::system(comando.c_str()), 0) << comando; // NOLINT(cert-env33-c): files of the test
}

class OutroPrograma : public PlanilhaTest, public testing::WithParamInterface<std::string> {
protected:
    OutroPrograma() { aplicacao::setPasta(TV_SOURCE_DIR "/data"); }
    ~OutroPrograma() override { aplicacao::setPasta(files::executableFolder()); }
    OutroPrograma(const OutroPrograma&) = delete;
    OutroPrograma& operator=(const OutroPrograma&) = delete;

    static std::string importado(const std::string& tag, const std::filesystem::path& planilha) {
        clsPlanilhaExcel importador;
        importador.tag = tag;
        importador.ImportarPlanilha(planilha.string());
        EXPECT_FALSE(importador.relato().falha) << planilha;
        return files::readAll(clsPlanilhaExcel::caminhoXml(planilha.string()));
    }
};

TEST_P(OutroPrograma, SavesWorkbooksThatImportToTheSameBytes) {
    const std::string tag = GetParam();
    exporta(tag, files::readAll(pastaDasAmostras() / tag / "valido_realista.xml"));
    const std::vector<std::string> planilhas = ultima->relato().planilhas;
    ASSERT_FALSE(planilhas.empty());
    const std::filesystem::path destino = pasta / "salvas";
    std::filesystem::create_directory(destino);
    ASSERT_NO_FATAL_FAILURE(salvaDeNovo(planilhas, destino));
    for (const std::string& planilha : planilhas) {
        const std::filesystem::path salva = destino / std::filesystem::path(planilha).filename();
        ASSERT_TRUE(files::exists(salva)) << salva;
        EXPECT_NE(files::readAll(salva), files::readAll(planilha));
        EXPECT_EQ(importado(tag, salva), importado(tag, planilha)) << planilha;
    }
}

INSTANTIATE_TEST_SUITE_P(Layouts, OutroPrograma, testing::Values("arquivoposicao_3_00", "movimento_2_00"),
                         [](const auto& um) { return um.param; });

/// Every cell of a workbook as another reader sees it: a line a sheet's name, a line a cell.
std::string celulasPorOutroLeitor(const ScratchFolder& pasta, const std::string& planilha) {
    const auto programa = pasta.file("le.py", R"(
import sys, xlrd
with open(sys.argv[2], 'w', encoding='utf-8', newline='') as out:
    for sheet in xlrd.open_workbook(sys.argv[1]).sheets():
        out.write('[' + sheet.name + ']\n')
        for row in sheet.get_rows():
            out.writelines(cell.value + '\n' for cell in row)
)");
    const std::string saida = (pasta / "celulas.txt").string();
    const std::string comando =
        "/usr/bin/python3 '" + programa.string() + "' '" + planilha + "' '" + saida + "'";
    EXPECT_EQ(std::system(comando.c_str()), 0) << comando; // NOLINT(cert-env33-c): files of the test
    return files::readAll(saida);
}

class OutroLeitor : public OutroPrograma {};

TEST_P(OutroLeitor, SeesEveryCellOfASamplesWorkbooksAsWeDo) {
    const std::filesystem::path amostra = pastaDasAmostras() / GetParam();
    exporta(amostra.parent_path().filename().string(), files::readAll(amostra));
    ASSERT_FALSE(ultima->relato().planilhas.empty());
    for (const std::string& planilha : ultima->relato().planilhas) {
        const std::string vistas = celulasPorOutroLeitor(pasta, planilha);
        std::string nossas;
        for (std::size_t em = vistas.find('['); em != std::string::npos; em = vistas.find("\n[", em)) {
            em += vistas[em] == '\n' ? 1U : 0U;
            const std::string nome = vistas.substr(em + 1, vistas.find("]\n", em) - em - 1);
            const WorkbookTable tabela = Workbook(planilha).select("SELECT * FROM [" + nome + "$]");
            nossas += "[" + nome + "]\n";
            for (const std::string& coluna : tabela.columns) {
                nossas += coluna + "\n";
            }
            for (const auto& linha : tabela.rows) {
                for (const auto& celula : linha) {
                    nossas += celula.value_or("") + "\n";
                }
            }
        }
        EXPECT_EQ(nossas, vistas) << planilha;
    }
}

INSTANTIATE_TEST_SUITE_P(Amostras, OutroLeitor, testing::ValuesIn(amostrasValidas()), [](const auto& uma) {
    std::string nome = uma.param.substr(0, uma.param.size() - 4);
    std::replace(nome.begin(), nome.end(), '/', '_');
    return nome;
});

} // namespace
} // namespace tv::test
