// Whatever a user can type into the grids comes back from the file as it was.

#include "Amostras.h"

#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "platform/format.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace tv::test {
namespace {

/// Fields that a flag takes out of the file.
const std::map<std::string, std::vector<std::string>>& camposPorFlag() {
    static const std::map<std::string, std::vector<std::string>> campos = {
        {"poscompromissada",
         {"dtretorno", "puretorno", "indexadorcomp", "perindexcomp", "txoperacao", "classecomp"}},
        {"tipoaluguel",
         {"dtvencalug", "txalug", "indexadoralug", "percalug", "cnpjaluguel", "txaluguel", "dtvencaluguel"}},
        {"barreira", {"tpbarreira", "limitebarreira"}},
        {"premio", {"lpremio", "arrependimento"}}};
    return campos;
}

/// Fills the grids of a document with random rows.
class Gerador {
public:
    Gerador(Documento& documento, unsigned semente)
        : documento_(documento)
        , acaso_(semente) {}

    void preenche() {
        for (const auto& mestre : documento_.grids()) {
            if (!mestre->secao->isSecaoMestre()) {
                continue;
            }
            const int fundos = ate(4);
            for (int rowID = 1; rowID <= fundos; ++rowID) {
                linha(*mestre, "rowID", rowID);
                for (const auto& grade : documento_.grids()) {
                    if (grade->dono == mestre->dono && grade != mestre) {
                        detalhes(*grade, rowID);
                    }
                }
            }
        }
    }

private:
    int ate(int maximo) { return std::uniform_int_distribution<int>(0, maximo)(acaso_); }

    void detalhes(const GradeSecao& grade, int rowMaster) {
        for (int resta = ate(3); resta > 0; --resta) {
            linha(grade, "rowMaster", rowMaster);
        }
    }

    void linha(const GradeSecao& grade, std::string_view chave, int valor) {
        RecordSet& dados = *grade.dados;
        dados.AddNew();
        dados.set(chave, valor);
        for (const auto& campo : grade.secao->getCampos()) {
            dados.set(campo->getTag(), valorDe(*campo));
        }
        for (const auto& [flag, campos] : camposPorFlag()) {
            aplicaFlag(grade, flag, campos);
        }
        dados.Update();
    }

    /// The file knows yes and no only, and without the group its fields are not there.
    void aplicaFlag(const GradeSecao& grade, const std::string& flag,
                    const std::vector<std::string>& campos) {
        const auto* campo = grade.secao->getCampos().find(flag);
        if (campo == nullptr || (*campo)->getColuna().getTabela() != "SIMNAO") {
            return; // of other layouts: a plain field of that name
        }
        const bool sim = ate(1) == 1;
        grade.dados->set(flag, std::string(sim ? "S" : "N"));
        for (const std::string& nome : campos) {
            if (!sim && grade.secao->getCampos().find(nome) != nullptr) {
                grade.dados->set(nome, Null{});
            }
        }
    }

    Value valorDe(const clsCampo& campo) {
        if (ate(4) == 0) {
            return Null{};
        }
        switch (static_cast<ColumnType>(campo.getDado().getTipo())) {
        case ColumnType::Integer:
            return ate(9999) - 5000;
        case ColumnType::Double:
            return numero(campo.getColuna().getMaskOutput());
        case ColumnType::Boolean:
            return ate(1) == 1;
        case ColumnType::Date:
            return clock::at(1901 + ate(150), static_cast<unsigned>(1 + ate(11)),
                             static_cast<unsigned>(1 + ate(27)));
        case ColumnType::FixedChar:
            break;
        }
        return texto();
    }

    /// A number with no more decimals than the field's mask keeps.
    Value numero(const std::string& mascara) {
        const double livre = std::uniform_real_distribution<double>(-1e9, 1e9)(acaso_) / (1 << ate(20));
        return *text::documentNumber(format::format(Value(livre), mascara));
    }

    Value texto() {
        static const std::vector<std::string> pecas = {
            "a", "Z", "9", "ç", "Ã", "&", "<", ">", "\"", "'", ",", ".", " x", "]]>", "&amp;", "\xE2\x82\xAC",
            "0"};
        std::string texto = "T";
        for (int resta = ate(12); resta > 0; --resta) {
            texto += pecas[static_cast<std::size_t>(ate(static_cast<int>(pecas.size()) - 1))];
        }
        return texto;
    }

    Documento& documento_;
    std::mt19937 acaso_;
};

class DocumentoGerado : public testing::TestWithParam<std::string> {};

TEST_P(DocumentoGerado, ComesBackFromItsFileRowByRow) {
    for (unsigned semente = 1; semente <= 8; ++semente) {
        Documento documento;
        documento.abrir(shippedCatalog().getBoletos().Item(GetParam()));
        Gerador(documento, semente).preenche();

        XmlDocument escrito;
        ASSERT_TRUE(escrito.loadXML(montaDocumento(documento).xml()));
        Documento lido;
        lido.abrir(documento.boleto());
        LeitorBoleto(lido).abre(escrito);
        EXPECT_EQ(linhasDoDocumento(lido), linhasDoDocumento(documento)) << GetParam() << " " << semente;
    }
}

INSTANTIATE_TEST_SUITE_P(Todos, DocumentoGerado,
                         testing::Values("arquivoposicao_4_01", "arquivoposicao_4_00", "arquivoposicao_3_00",
                                         "ArquivoPosicao_2_01", "posicao_passivo_analitico_v100",
                                         "movimento_1_00", "movimento_2_00"),
                         [](const auto& um) { return um.param; });

} // namespace
} // namespace tv::test
