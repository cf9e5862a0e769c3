// Workbooks that another program has saved come back as the same bytes.

#include "PlanilhasDeTeste.h"

#include "../composer/Amostras.h"
#include "app/Aplicacao.h"

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

} // namespace
} // namespace tv::test
