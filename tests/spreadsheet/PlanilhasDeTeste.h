#pragma once

#include "../logging/LogFolder.h"
#include "../platform/ScratchFolder.h"
#include "platform/Clock.h"
#include "platform/Workbook.h"
#include "spreadsheet/clsPlanilhaExcel.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tv::test {

/// A screen that writes down what it is told, a line a call.
class TelaAnotada final : public TelaPlanilha {
public:
    std::vector<std::string> chamadas;
    bool anotaPassos = true; ///< The bar's calls, too.

    std::unique_ptr<ProgressoPlanilha> criaProgresso() override {
        chamadas.emplace_back("abre");
        return std::make_unique<Progresso>(*this);
    }
    void informa(const std::string& texto, const std::string& titulo) override {
        chamadas.push_back("informa " + titulo + ": " + texto);
    }
    bool aberta() const { return abertas_ > 0; } ///< A progress window still stands.

private:
    class Progresso final : public ProgressoPlanilha {
    public:
        explicit Progresso(TelaAnotada& tela)
            : tela_(tela) {
            ++tela_.abertas_;
        }
        void setMsg(std::string_view titulo, std::string_view descricao, int valor, int operacao) override {
            tela_.chamadas.push_back(std::string(titulo) + " | " + std::string(descricao) + " | " +
                                     std::to_string(valor) + " | " + std::to_string(operacao));
        }
        void setMax(std::size_t maximo) override {
            if (tela_.anotaPassos) {
                tela_.chamadas.push_back("max " + std::to_string(maximo));
            }
        }
        void incProgress() override {
            if (tela_.anotaPassos) {
                tela_.chamadas.emplace_back("+1");
            }
        }
        void destroy() override {
            tela_.chamadas.emplace_back("fecha");
            --tela_.abertas_;
        }

    private:
        TelaAnotada& tela_;
    };
    int abertas_ = 0;
};

/// A sheet as text: the columns, then the rows, parted by "|"; an empty cell is "-". Its error when there is
/// no such sheet.
inline std::vector<std::string> folha(const std::filesystem::path& planilha, const std::string& nome) {
    std::vector<std::string> linhas;
    try {
        const WorkbookTable tabela = Workbook(planilha).select("SELECT * FROM [" + nome + "$]");
        std::string linha;
        for (const std::string& coluna : tabela.columns) {
            linha += (linha.empty() ? "" : "|") + coluna;
        }
        linhas.push_back(linha);
        for (const auto& celulas : tabela.rows) {
            linha.clear();
            for (std::size_t i = 0; i < celulas.size(); ++i) {
                linha += (i == 0 ? "" : "|") + celulas[i].value_or("-");
            }
            linhas.push_back(linha);
        }
    } catch (const Error&) {
        linhas = {"não há"};
    }
    return linhas;
}

/// A folder for documents and workbooks, time that stands at 31/01/2024 10:20:30, and a log of everything.
class PlanilhaTest : public testing::Test {
protected:
    ScratchFolder pasta;
    clock::Frozen agora{clock::at(2024, 1, 31, 10, 20, 30)};
    TemporaryFolder pastaDoLog;
    GlobalLogger logger{startLogger(pastaDoLog, clsLogger::typeTXT, library::level::all)};
    TelaAnotada tela;

    static std::string sufixo(int contador) {
        const std::string numero = std::to_string(contador);
        return std::string(3 - numero.size(), '0') + numero + "_20240131_102030.xls";
    }
    /// The FATAL lines of the log, as "routine -> text".
    std::vector<std::string> falhas() const {
        std::vector<std::string> achadas;
        for (const std::string& linha : lines(pastaDoLog.read("log20240131.txt"))) {
            constexpr std::string_view marca = " - FATAL  ";
            const std::size_t em = linha.find(marca);
            if (em == std::string::npos) {
                continue;
            }
            std::string entrada = linha.substr(em + marca.size());
            entrada.erase(0, entrada.find_first_not_of('\t'));
            const std::size_t seta = entrada.find(" -> ");
            std::string rotina = entrada.substr(0, seta);
            rotina.erase(rotina.find_last_not_of(' ') + 1);
            achadas.push_back(rotina + entrada.substr(seta));
        }
        return achadas;
    }

    std::filesystem::path exporta(const std::string& tag, const std::string& xml,
                                  const std::string& nome = "doc.xml") {
        const std::filesystem::path documento = pasta.file(nome, xml);
        ultima = std::make_unique<clsPlanilhaExcel>(&tela);
        ultima->tag = tag;
        ultima->arquivo = documento.string();
        ultima->OpenPlan(documento.string(), "");
        return documento;
    }
    /// The workbook of a child of the root, by its counter.
    std::filesystem::path planilha(const std::string& raiz, int contador,
                                   const std::string& nome = "doc") const {
        return pasta / (nome + "__" + raiz + "_" + sufixo(contador));
    }

    std::unique_ptr<clsPlanilhaExcel> ultima; ///< Of the last export or import.
};

} // namespace tv::test
