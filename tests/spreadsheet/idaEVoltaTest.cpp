// Every sound sample goes out to workbooks and comes back as the documents that the exchange promises.

#include "PlanilhasDeTeste.h"

#include "../composer/Amostras.h"
#include "app/Aplicacao.h"
#include "platform/text.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>

namespace tv::test {
namespace {

using Campos = std::vector<std::pair<std::string, std::string>>;

/// A section as its sheet will hold it: told from the document alone, by what the exchange promises.
struct Tabela {
    std::vector<std::string> colunas;
    std::vector<std::map<std::string, std::string>> linhas;
};

/// A record's fields; those of its compromisso flat.
Campos camposDe(const XmlNode& registro) {
    Campos campos;
    for (const XmlNode& campo : registro.childElements()) {
        if (campo.baseName() != "compromisso") {
            campos.emplace_back(campo.baseName(), campo.text());
            continue;
        }
        for (const XmlNode& dentro : campo.childElements()) {
            campos.emplace_back(dentro.baseName(), dentro.text());
        }
    }
    return campos;
}

std::vector<std::string> colunasDe(const std::vector<XmlNode>& registros) {
    std::vector<std::string> doCompromisso;
    for (const XmlNode& registro : registros) {
        if (const XmlNode compromisso = registro.child("compromisso"); compromisso && doCompromisso.empty()) {
            for (const XmlNode& campo : compromisso.childElements()) {
                doCompromisso.push_back(campo.baseName());
            }
        }
    }
    std::vector<std::string> colunas;
    for (const XmlNode& campo : registros.front().childElements()) {
        if (campo.baseName() != "compromisso") {
            colunas.push_back(campo.baseName());
        }
        if (campo.baseName() == "percprovcred") {
            colunas.insert(colunas.end(), doCompromisso.begin(), doCompromisso.end());
        }
    }
    return colunas;
}

Tabela tabelaDe(const std::vector<XmlNode>& registros) {
    Tabela tabela{colunasDe(registros), {}};
    for (const XmlNode& registro : registros) {
        std::map<std::string, std::string> linha;
        bool cabe = true;
        for (const auto& [nome, valor] : camposDe(registro)) {
            cabe = cabe && std::count(tabela.colunas.begin(), tabela.colunas.end(), nome) == 1 &&
                   text::length(valor) <= 255;
            linha[nome] = valor;
        }
        if (cabe) {
            tabela.linhas.push_back(linha);
        }
    }
    return tabela;
}

/// One row as lines of a tree, in the document that comes back.
void acrescentaRegistro(const std::string& secao, const Tabela& tabela,
                        const std::map<std::string, std::string>& linha, bool refaz,
                        std::vector<std::string>& linhas) {
    const auto inicio = std::find(tabela.colunas.begin(), tabela.colunas.end(), "dtretorno");
    const auto fim = std::find(inicio, tabela.colunas.end(), "classeoperacao");
    const bool temIntervalo = inicio != fim;
    const auto valorDe = [&](const std::string& coluna) {
        const auto achado = linha.find(coluna);
        return achado == linha.end() ? std::string() : std::string(text::trim(achado->second));
    };
    const bool tem = temIntervalo && !valorDe(*(fim - 1)).empty();
    linhas.push_back("  " + secao);
    for (auto coluna = tabela.colunas.begin(); coluna != tabela.colunas.end(); ++coluna) {
        const bool dentro = temIntervalo && coluna >= inicio && coluna < fim;
        if (dentro && !tem && secao != "header") {
            continue;
        }
        if (coluna == inicio && refaz && tem) {
            linhas.emplace_back("   compromisso");
        }
        linhas.push_back((dentro && refaz && tem ? "    " : "   ") + *coluna + "=" + valorDe(*coluna));
    }
}

std::vector<std::string> secoesDoCatalogo(const std::string& tag, const std::string& raiz) {
    const clsBoleto& boleto = *shippedCatalog().getBoletos().Item(tag);
    const bool deRaiz = tag == "ArquivoPosicao_2_01" || tag == "posicao_passivo_analitico_v100";
    std::vector<std::string> secoes;
    const SectionOwner& dona =
        deRaiz ? static_cast<const SectionOwner&>(boleto) : *boleto.getSecoes().Item(raiz);
    for (const auto& secao : dona.getSecoes()) {
        secoes.push_back(secao->getTag());
    }
    return secoes;
}

/// The document that a fund of a grouped layout comes back as.
std::vector<std::string> prometido(const std::string& tag, const XmlNode& fundo) {
    std::vector<std::string> linhas{tag, " " + fundo.baseName()};
    for (const std::string& secao : secoesDoCatalogo(tag, fundo.baseName())) {
        const std::vector<XmlNode> registros = fundo.selectNodes(secao);
        if (registros.empty()) {
            continue;
        }
        const Tabela tabela = tabelaDe(registros);
        for (const auto& linha : tabela.linhas) {
            acrescentaRegistro(secao, tabela, linha, tag == "arquivoposicao_3_00", linhas);
            if (secao == "header") {
                break;
            }
        }
    }
    if (linhas.size() == 2) {
        linhas.back() += "=";
    }
    return linhas;
}

class IdaEVolta : public PlanilhaTest, public testing::WithParamInterface<std::string> {
protected:
    IdaEVolta() { aplicacao::setPasta(TV_SOURCE_DIR "/data"); }
    ~IdaEVolta() override { aplicacao::setPasta(files::executableFolder()); }
    IdaEVolta(const IdaEVolta&) = delete;
    IdaEVolta& operator=(const IdaEVolta&) = delete;

    std::string tag() const { return std::filesystem::path(GetParam()).parent_path().string(); }
    void exportaAmostra() {
        exporta(tag(), files::readAll(pastaDasAmostras() / GetParam()));
        ASSERT_FALSE(ultima->relato().falha);
    }
    std::vector<std::string> importado(const std::string& planilha) {
        clsPlanilhaExcel importador;
        importador.tag = tag();
        importador.ImportarPlanilha(planilha);
        EXPECT_FALSE(importador.relato().falha);
        XmlDocument documento;
        EXPECT_TRUE(documento.load(clsPlanilhaExcel::caminhoXml(planilha))) << documento.parseError();
        return arvoreXml(documento);
    }
};

TEST_P(IdaEVolta, GivesTheDocumentThatWasPromised) {
    ASSERT_NO_FATAL_FAILURE(exportaAmostra());
    XmlDocument documento;
    ASSERT_TRUE(documento.load(pastaDasAmostras() / GetParam()));
    const std::vector<XmlNode> fundos = documento.documentElement().childElements();
    const std::vector<std::string> planilhas = ultima->relato().planilhas;
    ASSERT_EQ(planilhas.size(), fundos.size());
    for (std::size_t i = 0; i < fundos.size(); ++i) {
        if (clsPlanilhaExcel::isAgrupado(tag())) {
            EXPECT_EQ(importado(planilhas[i]), prometido(tag(), fundos[i])) << planilhas[i];
        } else {
            // Sections that are no fields do not fit into one sheet: what comes back is the layout's tag.
            EXPECT_THAT(importado(planilhas[i]).front(), testing::StartsWith(tag()));
        }
    }
}

/// Records with a field that the first record of their section lacks.
std::size_t perdasPrometidas(const XmlNode& fundo) {
    std::set<std::string> secoes;
    for (const XmlNode& registro : fundo.childElements()) {
        secoes.insert(registro.baseName());
    }
    std::size_t perdas = 0;
    for (const std::string& secao : secoes) {
        const std::vector<XmlNode> registros = fundo.selectNodes(secao);
        perdas += registros.size() - tabelaDe(registros).linhas.size();
    }
    return perdas;
}

TEST_P(IdaEVolta, LosesTheRecordsWithMoreFieldsThanTheFirstAndNoOthers) {
    ASSERT_NO_FATAL_FAILURE(exportaAmostra());
    XmlDocument documento;
    ASSERT_TRUE(documento.load(pastaDasAmostras() / GetParam()));
    std::size_t perdas = 0;
    for (const XmlNode& fundo : documento.documentElement().childElements()) {
        perdas += perdasPrometidas(fundo);
    }
    if (clsPlanilhaExcel::isAgrupado(tag())) {
        EXPECT_EQ(ultima->relato().registrosPerdidos(), perdas);
    } else {
        EXPECT_GT(ultima->relato().registrosPerdidos(), 0U);
    }
}

INSTANTIATE_TEST_SUITE_P(Amostras, IdaEVolta, testing::ValuesIn(amostrasValidas()), [](const auto& uma) {
    std::string nome = uma.param.substr(0, uma.param.size() - 4);
    std::replace(nome.begin(), nome.end(), '/', '_');
    return nome;
});

} // namespace
} // namespace tv::test
