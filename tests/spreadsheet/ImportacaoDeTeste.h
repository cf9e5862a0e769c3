#pragma once

#include "PlanilhasDeTeste.h"

#include "app/Aplicacao.h"

#include <optional>

namespace tv::test {

inline const std::string grupo = "movimento_1_00";               // funds below the root
inline const std::string comCompromisso = "arquivoposicao_3_00"; // the same, and its compromisso is made anew
inline const std::string declaracao = "<?xml version='1.0' encoding='ISO-8859-1' ?>\r\n";

inline std::string secao(const std::string& tag, const std::string& filhos = "") {
    return "<SECAO tag='" + tag + "'>" + filhos + "</SECAO>";
}

/// A catalog whose layouts have the sections header, t and u: below fundo and carteira, and below the layout.
inline std::string catalogo() {
    std::string boletos;
    for (const char* tag : {"arquivoposicao_3_00", "arquivoposicao_4_00", "arquivoposicao_4_01",
                            "movimento_1_00", "movimento_2_00", "plano"}) {
        const std::string secoes = secao("header") + secao("t") + secao(" u ");
        boletos += "<BOLETO tag='" + std::string(tag) + "'>" + secao("fundo", secoes) +
                   secao("carteira", secoes) + "</BOLETO>";
    }
    for (const char* tag : {"ArquivoPosicao_2_01", "arquivoposicao_2_01", "posicao_passivo_analitico_v100"}) {
        boletos += "<BOLETO tag='" + std::string(tag) + "'>" + secao("header") + secao("t") + secao(" u ") +
                   "</BOLETO>";
    }
    return "<TORVA><BOLETOS>" + boletos + "</BOLETOS></TORVA>";
}

using Linha = std::vector<std::optional<std::string>>;

/// A workbook is filled sheet by sheet; a cell without a value stays empty.
class NovaPlanilha {
public:
    explicit NovaPlanilha(const std::filesystem::path& caminho)
        : workbook_(caminho) {}
    NovaPlanilha& folha(const std::string& nome, const std::vector<std::string>& colunas,
                        const std::vector<Linha>& linhas) {
        std::string comando;
        for (const std::string& coluna : colunas) {
            comando += (comando.empty() ? "" : ", ") + coluna + " varchar(255)";
        }
        workbook_.execute("CREATE TABLE " + nome + "( " + comando + ")");
        for (const Linha& linha : linhas) {
            insere(nome, colunas, linha);
        }
        return *this;
    }
    void fecha() { workbook_.close(); }

private:
    void insere(const std::string& nome, const std::vector<std::string>& colunas, const Linha& linha) {
        std::string nomes;
        std::string valores;
        for (std::size_t i = 0; i < colunas.size(); ++i) {
            if (linha.at(i)) {
                nomes += (nomes.empty() ? "" : ", ") + colunas[i];
                valores += (valores.empty() ? "'" : ", '") + *linha[i] + "'";
            }
        }
        workbook_.execute("INSERT INTO " + nome + "( " + nomes + ") VALUES (" + valores + ") ");
    }

    Workbook workbook_;
};

class Importa : public PlanilhaTest {
protected:
    Importa() {
        aplicacao_.write("TORVA_TramadorValidador.xml", catalogo());
        aplicacao::setPasta(aplicacao_.path());
    }
    ~Importa() override { aplicacao::setPasta(files::executableFolder()); }
    Importa(const Importa&) = delete;
    Importa& operator=(const Importa&) = delete;

    /// A workbook "x_fundo.xls" with these rows of one sheet.
    std::filesystem::path planilhaCom(const std::string& folha, const std::vector<std::string>& colunas,
                                      const std::vector<Linha>& linhas,
                                      const std::string& nome = "x_fundo.xls") {
        NovaPlanilha(pasta / nome).folha(folha, colunas, linhas).fecha();
        return pasta / nome;
    }
    /// Imports and gives the document's bytes; nothing when there is none.
    std::optional<std::string> importa(const std::string& tag, const std::filesystem::path& planilha) {
        ultima = std::make_unique<clsPlanilhaExcel>(&tela);
        ultima->tag = tag;
        ultima->ImportarPlanilha(planilha.string());
        const std::filesystem::path xml = clsPlanilhaExcel::caminhoXml(planilha.string());
        return files::exists(xml) ? std::optional(files::readAll(xml)) : std::nullopt;
    }
    static std::string comGrupo(const std::string& tag, const std::string& registros,
                                const std::string& raiz = "fundo") {
        return declaracao + "<" + tag + ">\r\n<" + raiz + ">\r\n" + registros + "\r\n</" + raiz + ">\r\n</" +
               tag + ">\r\n";
    }

    TemporaryFolder aplicacao_;
};

} // namespace tv::test
