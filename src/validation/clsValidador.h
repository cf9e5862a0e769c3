#pragma once

#include "model/clsBoleto.h"
#include "platform/XmlReader.h"
#include "validation/TextoAcumulado.h"
#include "validation/clsResultado.h"
#include "validation/clsStackXML.h"

#include <cstdint>
#include <filesystem>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

class FormulaAoLado;
class XmlDocument;
class XmlNode;

/// The findings of one run, in the order in which they came up.
using Resultados = std::vector<clsResultado>;

/// Checks a file against a layout in two stages and collects findings.
///
/// The first stage parses the file with the layout's XSD, follows it with a stack of layout nodes and puts
/// every field's text to the layout's rules. The second, for layouts with a formula, runs the layout's
/// stylesheet and the rules across fields; the document's load and the stylesheet run beside the first stage,
/// in a thread of their own. One object serves many files; the key text of all of them piles up
/// in it.
class clsValidador final : private XmlHandler {
public:
    /// How the second stage is prepared: beside the first one (of files that are large enough for it), or
    /// behind it in the same thread, where all cores have files of their own to check.
    enum class Estagios { AoMesmoTempo, UmAposOutro };

    explicit clsValidador(Estagios estagios = Estagios::AoMesmoTempo)
        : estagios_(estagios) {}
    ~clsValidador() override = default;
    clsValidador(const clsValidador&) = delete; // two validators must not share a growing key text
    clsValidador& operator=(const clsValidador&) = delete;

    /// True when the file has no finding. False without a finding for a blank path or no layout.
    /// A failure before the parse (a schema that does not load) is logged, and the findings of the run before
    /// decide.
    bool isValido(const std::filesystem::path& arquivo, const std::shared_ptr<const clsBoleto>& boleto);

    /// Makes the only run of another validator the last one of this one, as if this one had checked the file:
    /// the key text goes on behind that of the files before, in the findings too.
    void junta(const clsValidador& outro);

    /// The findings of the last run. The list stays with the caller when the next run starts.
    std::shared_ptr<const Resultados> getResultado() const noexcept { return resultados_; }

    /// Why a check of the last run could not be made (a schema or stylesheet that does not load, a formula
    /// whose output cannot be read); empty when all checks ran.
    const std::vector<std::string>& getAvisos() const noexcept { return avisos_; }
    /// True when the last run's file could not be read at all.
    bool arquivoIlegivel() const noexcept { return ilegivel_; }

private:
    void documentLocator(const XmlLocator& locator) override { locator_ = &locator; }
    void startDocument() override;
    void startElement(std::string_view localName) override;
    void characters(std::string_view text) override;
    void endElement(std::string_view localName) override;
    void endDocument() override { fimDocumento_ = true; }
    void error(const XmlFault& fault) override;
    void fatalError(const XmlFault& fault) override;
    void ignorableWarning(const XmlFault& fault) override;

    std::launch modoDaFormula(const std::filesystem::path& arquivo) const;
    void segundoEstagio(FormulaAoLado& formula);
    void leResultadoFormula(std::string xml, const XmlDocument& documento);
    void registraItem(const XmlNode& item);
    void registraResultado(std::string_view titulo, std::string_view mensagem, std::int32_t codigo,
                           std::int32_t linha, std::int32_t coluna);

    Estagios estagios_;
    const XmlLocator* locator_ = nullptr;
    std::string valorAcumulado_;
    std::string ultimoValor_;
    TextoAcumulado valorChave_;
    bool fimDocumento_ = false;
    clsStackXML pilha_;
    std::shared_ptr<const clsBoleto> boleto_;
    std::shared_ptr<Resultados> resultados_ = std::make_shared<Resultados>();
    std::string fragmentos_;
    std::vector<std::string> avisos_;
    bool ilegivel_ = false;
    bool malFormado_ = false;
};

} // namespace tv
