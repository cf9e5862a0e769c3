#include "composer/nomeDoArquivo.h"

#include "../platform/Throws.h"
#include "Layouts.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <array>

namespace tv::test {
namespace {

using nomeDoArquivo::propoeNomeArquivo;

/// 5 July 2024, 9:03:07.
class NomeDoArquivo : public testing::Test {
protected:
    const clock::Frozen agora{clock::at(2024, 7, 5, 9, 3, 7)};
};

std::string data(const std::string& tag) {
    return CampoXml{.tag = tag, .tipo = "DATA", .maskOutput = "YYYYMMDD"}.xml();
}

std::shared_ptr<const clsBoleto> layoutDaVersao(const std::string& versao) {
    const std::string fundo = mestre("header", campoChave() + data("dtposicao") + campo("nome"));
    const std::string carteira =
        mestre("header", campoChave("codcart") + data("dtposicao") + campo("nome") + campo("cnpj"));
    return layoutOf({.tag = "p",
                     .inside = grupo("fundo", "Fundos", fundo) + grupo("carteira", "Carteiras", carteira),
                     .versao = versao,
                     .nomeGrupo = "Fundo ou carteira",
                     .tagGrupo = "fundo"});
}

void linha(const Documento& documento, std::string_view grade, std::string_view chave, Value valor) {
    RecordSet& dados = *documento.grade(grade).dados;
    dados.AddNew();
    dados.set(chave, std::move(valor));
    dados.set("dtposicao", clock::at(2024, 6, 28));
    dados.set("nome", std::string(" Fundo Ágil "));
    dados.Update();
}

struct Proposta {
    std::string versao;
    int fundos;
    int carteiras;
    std::string esperado;
};

TEST_F(NomeDoArquivo, IsProposedByKindNumberAndDates) {
    const std::vector<Proposta> rows = {
        {"4.01.00", 1, 0, "FD94000001000180_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.00.00", 1, 0, "FD94000001000180_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", 0, 1, "CTCART1_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", 1, 1, "LT94000001000180_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", 1, 2, "LT94000001000180_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", 2, 0, "/docs/antes.xml"}, // no name of its own: the document's path
        {"4.01.00", 2, 1, "/docs/antes.xml"},
        {"4.01.00", 0, 2, "/docs/antes.xml"},
        {"3.00.00", 1, 0, "94000001000180_20240705_"},
        {"3.00.00", 2, 0, "LT_20240705_"},
        {"3.00.00", 0, 1, "LT_20240705_"},
        {"4.1", 1, 1, "94000001000180_20240705_"},
    };
    for (const Proposta& row : rows) {
        Documento documento;
        documento.abrir(layoutDaVersao(row.versao));
        documento.estado.arquivo = "/docs/antes.xml";
        for (int i = 0; i < row.fundos; ++i) {
            linha(documento, "p_fundo_header", "cnpj", std::string("94000001000180"));
        }
        for (int i = 0; i < row.carteiras; ++i) {
            linha(documento, "p_carteira_header", "codcart", std::string("CART1"));
        }
        EXPECT_EQ(nomeDoArquivo::proposta(documento), row.esperado)
            << row.versao << " " << row.fundos << " " << row.carteiras;
    }
}

TEST_F(NomeDoArquivo, ValuesMakeNoPathOfIt) {
    struct Valor {
        std::string versao;
        std::string cnpj;
        std::string esperado;
    };
    const std::vector<Valor> rows = {
        {"4.01.00", "../../1", "FD.._.._1_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", "/etc/1", "FD_etc_1_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", "..\\..\\1", "FD.._.._1_20240628_20240705_090307_Fundo Ágil.xml"},
        {"4.01.00", "1\n2", "FD1_2_20240628_20240705_090307_Fundo Ágil.xml"},
        {"3.00.00", "/tmp/1", "_tmp_1_20240705_"},
        {"3.00.00", "../1", ".._1_20240705_"},
    };
    for (const Valor& row : rows) {
        Documento documento;
        documento.abrir(layoutDaVersao(row.versao));
        documento.estado.arquivo = "/docs/antes.xml";
        linha(documento, "p_fundo_header", "cnpj", row.cnpj);
        EXPECT_EQ(nomeDoArquivo::proposta(documento), row.esperado) << row.cnpj;
    }
}

TEST_F(NomeDoArquivo, WithoutAPathBeforeThereMayBeNone) {
    Documento documento;
    documento.abrir(layoutDaVersao("4.01.00"));
    linha(documento, "p_fundo_header", "cnpj", Null{});
    EXPECT_EQ(nomeDoArquivo::proposta(documento), "");
}

TEST_F(NomeDoArquivo, TakesTheKeyOfTheLayoutsOwnMaster) {
    Documento documento;
    documento.abrir(layoutDireto());
    RecordSet& dados = *documento.grade("passivo_header").dados;
    dados.AddNew();
    dados.set("cnpj", std::string("1"));
    dados.Update();
    EXPECT_EQ(nomeDoArquivo::proposta(documento), "1_20240705_");
}

TEST_F(NomeDoArquivo, NeedsAKeyField) {
    Documento documento;
    documento.abrir(layoutOf({.tag = "l", .inside = mestre("header", campo("x"))}));
    documento.getGrid().dados->AddNew();
    documento.getGrid().dados->Update();
    EXPECT_EQ(errorOf([&] { nomeDoArquivo::proposta(documento); }), errc::objectNotSet);
}

TEST_F(NomeDoArquivo, NeedsNumberAndDateButNoName) {
    Documento documento;
    documento.abrir(layoutDaVersao("4.01.00"));
    RecordSet& dados = *documento.grade("p_fundo_header").dados;
    dados.AddNew();
    dados.set("cnpj", std::string(" 1 "));
    EXPECT_EQ(propoeNomeArquivo(&dados, "n", "4.01.00", "fundo"), "");
    dados.set("dtposicao", clock::at(2024, 6, 28));
    EXPECT_EQ(propoeNomeArquivo(&dados, "n", "4.01.00", "fundo"), "FD1_20240628_20240705_090307_.xml");
    dados.set("cnpj", std::string("  "));
    EXPECT_EQ(propoeNomeArquivo(&dados, "n", "4.01.00", "fundo"), "");
    EXPECT_EQ(propoeNomeArquivo(nullptr, "n", "4.01.00", "fundo"), "");
    EXPECT_EQ(propoeNomeArquivo(nullptr, "n", "4.02.00", "fundo"), "n");
    EXPECT_EQ(errorOf([&] { propoeNomeArquivo(&dados, "n", "4.01.00", "carteira"); }), errc::invalidCall);
}

TEST(NomeDeArquivo, HasALetterPairForEachKind) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"fundo", "FD"}, {"CARTEIRA", "CT"}, {"Lote", "LT"}, {"outro", ""}, {"", ""}, {" fundo", ""}};
    for (const auto& [tipo, sigla] : rows) {
        EXPECT_EQ(nomeDoArquivo::siglaTipoArquivo(tipo), sigla) << tipo;
    }
}

TEST(NomeDeArquivo, TakesItsPartsFromFieldsByKind) {
    const std::vector<std::array<std::string, 3>> rows = {
        {"fundo", "cnpj", "cnpj"},
        {"fundo", "dtposicao", "dtposicao"},
        {"fundo", "nome", "nome"},
        {"carteira", "cnpj", "codcart"},
        {"carteira", "dtposicao", "dtposicao"},
        {"carteira", "nome", "nome"},
        {"lote", "cnpj", "cnpj"},
        {"lote", "dtposicao", "dtposicao"},
        {"lote", "nome", "nome"},
        {" LOTE ", " CNPJ ", "cnpj"},
        {"fundo", "isin", ""},
        {"outro", "cnpj", ""},
    };
    for (const auto& [tipo, campo, esperado] : rows) {
        EXPECT_EQ(nomeDoArquivo::campoNomeArquivo(tipo, campo), esperado) << tipo << "." << campo;
    }
}

TEST_F(NomeDoArquivo, OfACopyHasNoPointsButItsEnding) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"/docs.2024/a.b/fundo.v1.xml", "/docs.2024/a.b/fundo_v1_xml_20240705.bkp"},
        {"/docs/semponto", "/docs/semponto_20240705.bkp"},
        {"fundo.xml", "fundo_xml_20240705.bkp"},
    };
    for (const auto& [arquivo, copia] : rows) {
        EXPECT_EQ(nomeDoArquivo::copia(arquivo), std::filesystem::path(copia)) << arquivo;
    }
}

} // namespace
} // namespace tv::test
