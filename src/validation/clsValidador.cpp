#include "validation/clsValidador.h"

#include "logging/Routine.h"
#include "platform/Files.h"
#include "platform/SchemaCache.h"
#include "platform/Turns.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"
#include "validation/FormulaAoLado.h"
#include "validation/RegrasEntreCampos.h"

#include <optional>
#include <system_error>
#include <utility>

namespace tv {

namespace {

/// From this size on, in bytes, a thread of its own for the second stage gains more than it costs.
constexpr std::uintmax_t tamanhoParaDoisFios = 100'000;

constexpr std::string_view fimDaRaiz = "</TORVA>";

// Text of an attribute or child element of a formula item; nothing there gives the empty text.
std::string getTextoNo(const XmlNode& item, std::string_view atributo) {
    return item.attribute(atributo).value_or("");
}

} // namespace

bool clsValidador::isValido(const std::filesystem::path& arquivo,
                            const std::shared_ptr<const clsBoleto>& boleto) {
    const Routine routine([&] {
        return "clsValidador.isValido(" + files::toText(arquivo) + "," +
               (boleto ? boleto->getNome() : std::string()) + ")";
    });
    avisos_.clear();
    ilegivel_ = false;
    malFormado_ = false;
    if (text::trim(files::toText(arquivo)).empty() || !boleto) {
        return false;
    }
    try {
        pilha_.destroy();
        boleto_ = boleto;
        std::optional<FormulaAoLado> formula; // begins beside the schema's load already
        if (boleto->hasFormula()) {
            formula.emplace(arquivo, files::fromPortable(boleto->getFormula()), modoDaFormula(arquivo));
        }
        XmlReader leitor(SchemaCache::get(files::fromPortable(boleto->getValidador())));
        resultados_ = std::make_shared<Resultados>();
        fimDocumento_ = false;
        proceed([&] { leitor.parse(arquivo, *this); });
        if (!fimDocumento_) {
            avisos_.emplace_back("A leitura do arquivo foi interrompida");
        }
        if (formula) {
            const bool terminou = proceed([&] { segundoEstagio(*formula); });
            if (!terminou && avisos_.empty()) {
                avisos_.emplace_back("A segunda etapa foi interrompida");
            }
        }
    } catch (const std::exception& falha) {
        // The findings of the run before decide then: a caller that must know asks getAvisos.
        logFailure(falha);
        avisos_.emplace_back(falha.what());
    }
    locator_ = nullptr;
    pilha_.destroy();
    return resultados_->empty();
}

std::launch clsValidador::modoDaFormula(const std::filesystem::path& arquivo) const {
    std::error_code semTamanho;
    const std::uintmax_t tamanho = std::filesystem::file_size(arquivo, semTamanho);
    const bool vale = !semTamanho && tamanho >= tamanhoParaDoisFios;
    return vale && estagios_ == Estagios::AoMesmoTempo ? std::launch::async : std::launch::deferred;
}

void clsValidador::junta(const clsValidador& outro) {
    const std::size_t antes = valorChave_.tamanho();
    valorChave_.acrescenta(outro.valorChave_.agora().texto());
    resultados_ = outro.resultados_;
    for (clsResultado& resultado : *resultados_) {
        resultado.continuaChave(outro.valorChave_, valorChave_, antes);
    }
    avisos_ = outro.avisos_;
    ilegivel_ = outro.ilegivel_;
}

// --- first stage: the events of the parse

void clsValidador::startDocument() {
    pilha_.destroy();
    fimDocumento_ = false;
}

void clsValidador::startElement(std::string_view localName) {
    const LayoutNode* filho = pilha_.isEmpty() ? boleto_.get() : pilha_.nextChild(localName);
    if (filho != nullptr) {
        pilha_.push(filho);
        valorAcumulado_.clear();
    }
}

void clsValidador::characters(std::string_view texto) {
    if (text::trim(texto) == "\n") {
        return;
    }
    ultimoValor_ = texto;
    const LayoutNode* no = pilha_.top();
    if (no == nullptr) {
        return;
    }
    if (no->isKeyField()) {
        valorChave_.acrescenta(texto);
    }
    valorAcumulado_ += texto;
    // What goes wrong in the user interface's turn is no matter of the file.
    proceed([] { turns::due(); });
}

void clsValidador::endElement(std::string_view localName) {
    if (const LayoutNode* no = pilha_.top()) {
        // The name is compared so that an element that the layout does not know is not judged by its parent's
        // rules.
        if (!no->isValido(text::trim(valorAcumulado_)) && localName == no->getTag()) {
            registraResultado({}, {}, clsResultado::codigoRegraCampo, locator_->lineNumber(),
                              locator_->columnNumber());
        }
        // `compromisso` wraps fields of the section around it and has no node of its own. Every other unknown
        // element pops as well: the XSD has reported it, and the rest of its section is walked one level
        // short.
        if (localName != "compromisso" && no->hasParent()) {
            pilha_.pop();
        }
    }
    valorAcumulado_.clear();
}

void clsValidador::error(const XmlFault& fault) {
    registraResultado("Erro", fault.message, fault.code, fault.position.line, fault.position.column);
}

void clsValidador::fatalError(const XmlFault& fault) {
    fimDocumento_ = true;
    malFormado_ = true;
    ilegivel_ = fault.code == xmlcode::fileNotFound || fault.code == xmlcode::fileNotReadable;
    registraResultado("Erro Fatal", fault.message, fault.code, fault.position.line, fault.position.column);
}

void clsValidador::ignorableWarning(const XmlFault& fault) {
    registraResultado("Alerta", fault.message, fault.code, fault.position.line, fault.position.column);
}

void clsValidador::registraResultado(std::string_view titulo, std::string_view mensagem, std::int32_t codigo,
                                     std::int32_t linha, std::int32_t coluna) {
    clsResultado resultado;
    // With no node to stand on (a fault before the first element) the finding has neither name nor path.
    if (const LayoutNode* no = pilha_.top()) {
        proceed(
            [&] { resultado.setTag(no->getNome(), ultimoValor_, pilha_.getPath(), valorChave_.agora()); });
    }
    resultado.setError(codigo, titulo, mensagem);
    resultado.setLocation(linha, coluna);
    resultado.SetBoleto(boleto_);
    resultados_->push_back(std::move(resultado));
}

// --- second stage: formula stylesheet and rules across fields

void clsValidador::segundoEstagio(FormulaAoLado& formula) {
    // Stylesheet and sums read one loaded document.
    const XmlDocument& documento = formula.documento();
    if (documento.empty() && !malFormado_) {
        avisos_.push_back("A segunda etapa não pôde ler o arquivo: " + documento.parseError());
    }
    std::string motivo;
    std::string xml = formula.saida(motivo);
    if (!motivo.empty()) {
        avisos_.push_back("A folha de fórmulas não pôde ser aplicada: " + motivo);
    }
    leResultadoFormula(std::move(xml), documento);
}

void clsValidador::leResultadoFormula(std::string xml, const XmlDocument& documento) {
    fragmentos_.clear();
    RegrasEntreCampos regras(fragmentos_);
    regras.verificaArquivo(documento, boleto_->getTag());

    // The fragments end in the closing tag themselves, so all of them go and one comes back.
    xml = text::replaceAll(xml, fimDaRaiz, "");
    XmlDocument saida;
    if (!saida.loadXML(xml + text::replaceAll(fragmentos_, fimDaRaiz, "") + std::string(fimDaRaiz))) {
        // No item is read, and the findings of the rules across fields are lost with it. A stylesheet whose
        // output alone cannot be read is a check that did not run; a fragment that a value has spoiled stays
        // without a word.
        if (avisos_.empty() && !documento.empty() && !saida.loadXML(xml + std::string(fimDaRaiz))) {
            avisos_.push_back("A saída da folha de fórmulas não pôde ser lida: " + saida.parseError());
        }
        return;
    }
    for (const XmlNode& item : saida.selectNodes("/TORVA/RESULTADO")) {
        if (!proceed([&] { registraItem(item); })) {
            avisos_.emplace_back("Um item da folha de fórmulas não pôde ser lido");
        }
    }
}

void clsValidador::registraItem(const XmlNode& item) {
    const auto numero = [&item](std::string_view atributo) {
        return text::lenientNumber(getTextoNo(item, atributo));
    };
    std::int32_t codigo = 0;
    std::int32_t linha = 0;
    std::int32_t coluna = 0;
    // A number beyond its type's range stays 0.
    proceed([&] { codigo = text::toInt32(numero("errCode")); });
    proceed([&] { linha = text::toInt16(numero("linha")); });
    proceed([&] { coluna = text::toInt16(numero("coluna")); });
    const XmlNode descricao = item.child("strDescription");

    clsResultado resultado;
    resultado.setTag(getTextoNo(item, "lastElement"), getTextoNo(item, "TAGvalor"), getTextoNo(item, "path"),
                     getTextoNo(item, "keyValor"));
    resultado.setError(codigo, getTextoNo(item, "strLabel"), descricao ? descricao.text() : std::string());
    resultado.setLocation(linha, coluna);
    resultado.SetBoleto(boleto_);
    resultados_->push_back(std::move(resultado));
}

} // namespace tv
