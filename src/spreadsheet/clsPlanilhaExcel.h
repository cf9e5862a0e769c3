#pragma once

#include "platform/Error.h"
#include "platform/Workbook.h"
#include "platform/XmlDocument.h"
#include "spreadsheet/RelatoPlanilha.h"
#include "spreadsheet/TelaPlanilha.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tv {

/// Documents out to workbooks and back. One object serves one export or one import.
///
/// A sheet is a table, a column a field, a record a row. An export takes its shape from the document alone,
/// an import its sections from the catalog in the application folder. No failure reaches the caller: it goes
/// to the log, and to `relato`.
class clsPlanilhaExcel {
public:
    /// `tela` shows progress and messages and outlives the object; without one nothing is shown.
    explicit clsPlanilhaExcel(TelaPlanilha* tela = nullptr)
        : tela_(tela) {}

    std::string arquivo; ///< Path of the document, for callers; no operation reads it.
    std::string tag;     ///< Tag of the layout; set before anything else.

    /// Writes the document `caminho` into workbooks beside it, one for each child of its root element.
    /// `secoes` is not read.
    void OpenPlan(const std::string& caminho, std::string_view secoes);

    /// Writes the workbook `caminho` into a document beside it, ".xml" for ".xls". A document that stands
    /// there gets the text appended.
    void ImportarPlanilha(const std::string& caminho);

    /// What the operations did so far, for callers that tell more than the screen does.
    const RelatoPlanilha& relato() const noexcept { return relato_; }

    /// True for the layouts whose root element holds `fundo` or `carteira`, and only those the sections.
    /// Exact, with case: "arquivoposicao_2_01" is none of them.
    static bool isAgrupado(std::string_view tag) noexcept;
    /// The names of the elements below the root `tag` of the document `xml`, trimmed, each followed by "|".
    /// Empty when there are none, and when the document cannot be read, which is logged.
    static std::string getSecoes(const std::string& xml, const std::string& tag);
    /// A document's path with ".xls" for every ".xml", and the other way round.
    static std::string caminhoPlanilha(std::string_view xml);
    static std::string caminhoXml(std::string_view planilha);

    /// Number of the error for a document that cannot be parsed; its source is the parser's reason.
    static constexpr std::int32_t erroAbertura = static_cast<std::int32_t>(0x800401C8U);

private:
    /// The records of a section below one `fundo` or `carteira`, looked up once for a workbook.
    struct Registros {
        std::vector<XmlNode> nos;
        std::optional<std::vector<std::string>> compromisso; ///< Names below the first one, once looked for.
    };
    struct Coluna {
        std::string nome;         ///< Trimmed.
        bool noIntervalo = false; ///< From `dtretorno` to the last one before `classeoperacao`.
        bool omissivel = false;   ///< Left out of rows without a `compromisso`.
    };

    // Both.
    void abrirXML(const std::filesystem::path& caminho);
    void abreProgresso();
    void setMsg(std::string_view titulo, std::string_view descricao, int valor, int operacao);
    void setMax(std::size_t maximo);
    void incProgress();
    void fechaProgresso();

    // Export.
    void exporta(const std::string& caminho);
    void exportaNo(const XmlNode& no, const std::string& base);
    void exportaSecoes(const XmlNode& no);
    void gravaPlanilha();
    static std::string getSufixoArquivo(std::string_view ignorado, std::size_t contador);
    bool isNovaSecao(const std::string& nome);
    void criarPlanilha(const XmlNode& no, const std::string& secao);
    std::string comandoCreate(const XmlNode& no, const std::string& secao);
    const std::vector<std::string>& camposCompromisso(Registros& registros) const;
    Registros& registrosDe(const XmlNode& no, const std::string& secao);
    void exportarCampos(const XmlNode& no, const std::string& secao);
    void insere(const XmlNode& registro, const std::string& secao);
    void contaPerda(const std::string& secao, const std::exception& falha, std::size_t registros = 1);
    void contaSecaoPerdida(const XmlNode& no, const std::string& secao, const std::exception& falha);

    // Import.
    void importa(const std::string& caminho);
    void escreveInicio(const std::string& raiz);
    void escreveFim(const std::string& raiz);
    void leSecoes(const std::string& raiz);
    void lerPlanilhas(const std::vector<XmlNode>& nos, const std::string& secao);
    void lePlanilha(const std::string& nome);
    void importarTabela(const WorkbookTable& registros, const std::string& nomeTabela);
    void escreveRegistro(const std::vector<std::optional<std::string>>& linha, bool todosOsCampos);
    void escreveLinha(std::string_view texto);
    static std::vector<Coluna> colunasDe(const WorkbookTable& registros);
    bool getCamposCompromisso(const std::vector<std::optional<std::string>>& linha) const;
    static bool incluirCampo(const Coluna& coluna, bool temCompromisso) noexcept;
    void gravarXML(const std::string& conexaoTexto) const;

    TelaPlanilha* tela_;
    std::optional<Workbook> conexao_;
    WorkbookTable registros_;
    XmlDocument documento_; ///< The document of an export; the catalog of an import.
    std::string xmlSaida_;
    std::string ultimaSecao_;
    std::unique_ptr<ProgressoPlanilha> progresso_;

    std::string planilha_;                                ///< Path of the workbook under way.
    std::size_t contador_ = 0;                            ///< Of the workbooks.
    std::size_t ultimaContagem_ = 0;                      ///< Of nodes, the one that was asked for last.
    std::unordered_map<std::string, Registros> porSecao_; ///< Of the workbook under way.
    std::set<std::string> criadas_;                       ///< Its sheets,
    std::set<std::string> perdidas_;                      ///< and those that it could not get.
    std::unordered_map<std::string, std::size_t> perdaPorMotivo_; ///< Position of its losses in `relato_`.
    std::string comando_;
    std::vector<Coluna> colunas_; ///< Of the sheet under way.
    RelatoPlanilha relato_;
};

} // namespace tv
