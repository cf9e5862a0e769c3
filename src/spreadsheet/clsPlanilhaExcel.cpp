#include "spreadsheet/clsPlanilhaExcel.h"

#include "logging/Routine.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

/// What export and import share.
namespace tv {

bool clsPlanilhaExcel::isAgrupado(std::string_view tag) noexcept {
    static constexpr std::array<std::string_view, 6> agrupados{
        "arquivoposicao_3_00", "ArquivoPosicao_2_01", "arquivoposicao_4_01", "posicao_passivo_analitico_v100",
        "movimento_1_00",      "movimento_2_00"};
    return std::find(agrupados.begin(), agrupados.end(), tag) != agrupados.end();
}

std::string clsPlanilhaExcel::caminhoPlanilha(std::string_view xml) {
    return text::replaceAll(xml, ".xml", ".xls");
}

std::string clsPlanilhaExcel::caminhoXml(std::string_view planilha) {
    return text::replaceAll(planilha, ".xls", ".xml");
}

std::string clsPlanilhaExcel::getSecoes(const std::string& xml, const std::string& tag) {
    constexpr const char* rotina = "clsPlanilhaExcel.getSecoes";
    return guarded(rotina, std::string(), [&] {
        XmlDocument documento;
        if (!documento.load(std::filesystem::path(xml))) {
            throw Error(erroAbertura, documento.parseError(), "Erro na leitura do XML");
        }
        std::string nomes;
        for (const XmlNode& no : documento.selectNodes("//" + tag + "/*")) {
            nomes.append(text::trim(no.name())).append("|");
        }
        return nomes;
    });
}

void clsPlanilhaExcel::abrirXML(const std::filesystem::path& caminho) {
    const Routine routine("clsPlanilhaExcel.abrirXML");
    try {
        documento_ = XmlDocument();
        if (!documento_.load(caminho)) {
            throw Error(erroAbertura, documento_.parseError(), "Erro na abertura do arquivo!");
        }
    } catch (const Error& falha) {
        relato_.falha = falha;
        logFailure(falha);
    }
}

// --- the progress window

void clsPlanilhaExcel::abreProgresso() {
    progresso_ = tela_ != nullptr ? tela_->criaProgresso() : nullptr;
}

void clsPlanilhaExcel::setMsg(std::string_view titulo, std::string_view descricao, int valor, int operacao) {
    if (progresso_) {
        progresso_->setMsg(titulo, descricao, valor, operacao);
    }
}

/// A bar has one step at least: an empty list, or one child, leaves it as it is.
void clsPlanilhaExcel::setMax(std::size_t maximo) {
    if (progresso_ && maximo > 0) {
        progresso_->setMax(maximo);
    }
}

void clsPlanilhaExcel::incProgress() {
    if (progresso_) {
        progresso_->incProgress();
    }
}

void clsPlanilhaExcel::fechaProgresso() {
    if (progresso_) {
        progresso_->destroy();
        progresso_.reset();
    }
}

} // namespace tv
