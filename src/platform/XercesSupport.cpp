#include "platform/XercesSupport.h"

#include "platform/Files.h"
#include "platform/text.h"

#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tv::xerces {

using namespace xercesc; // NOLINT(google-build-using-namespace)

static_assert(sizeof(XMLCh) == sizeof(char16_t), "the parser's characters are UTF-16 code units");

void start() {
    struct Library {
        Library() { XMLPlatformUtils::Initialize(); }
    };
    // Never terminated: compiled schemas may be released after the end of main.
    static const Library library;
    static_cast<void>(library);
}

void appendUtf8(std::string& out, const XMLCh* text, XMLSize_t length) {
    std::array<char, 64> ascii{};
    while (length > 0) {
        std::size_t taken = 0;
        for (; taken < std::min(ascii.size(), length) && text[taken] < 0x80; ++taken) {
            ascii[taken] = static_cast<char>(text[taken]);
        }
        out.append(ascii.data(), taken);
        text += taken;
        length -= taken;
        if (length > 0 && *text >= 0x80) {
            tv::text::appendUtf8(out, text, length);
            return;
        }
    }
}

std::string toUtf8(const XMLCh* text, XMLSize_t length) {
    std::string out;
    appendUtf8(out, text, length);
    return out;
}

std::string toUtf8(const XMLCh* text) {
    return text == nullptr ? std::string() : toUtf8(text, XMLString::stringLen(text));
}

std::u16string toUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const std::size_t size = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
        char32_t point = size == 1 ? lead : static_cast<char32_t>(lead & (0xFFU >> (size + 1)));
        for (std::size_t k = 1; k < size && i + k < text.size(); ++k) {
            point = (point << 6U) | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        }
        i += size;
        if (point >= 0x10000) {
            out.push_back(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10U)));
            out.push_back(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FFU)));
        } else {
            out.push_back(static_cast<char16_t>(point));
        }
    }
    return out;
}

namespace {

bool isValidityDomain(const XMLCh* domain) {
    return XMLString::equals(domain, XMLUni::fgValidityDomain);
}

// Pieces of a message between apostrophes, in order: the names and values that the parser put into it.
std::vector<std::string> quotedPieces(const std::string& message) {
    std::vector<std::string> pieces;
    for (std::size_t from = message.find('\''); from != std::string::npos; from = message.find('\'', from)) {
        const std::size_t to = message.find('\'', from + 1);
        if (to == std::string::npos) {
            break;
        }
        pieces.push_back(message.substr(from + 1, to - from - 1));
        from = to + 1;
    }
    return pieces;
}

// Portuguese messages by the parser's number of a validity fault; "{0}" and "{1}" are the quoted pieces in
// order.
const std::unordered_map<unsigned int, std::string_view>& validityMessages() {
    static const std::unordered_map<unsigned int, std::string_view> messages{
        {XMLValid::ElementNotDefined, "O elemento '{0}' não é permitido aqui."},
        {XMLValid::ElementNotValidForContent, "O elemento '{0}' não é permitido aqui."},
        {XMLValid::NotEnoughElemsForCM, "Faltam elementos obrigatórios."},
        {XMLValid::AttNotDefined, "O atributo '{0}' não está declarado no esquema."},
        {XMLValid::NotationNotDeclared, "A notação '{0}' é usada mas não está declarada."},
        {XMLValid::RootElemNotLikeDocType, "O elemento raiz é diferente do que foi declarado em DOCTYPE."},
        {XMLValid::RequiredAttrNotProvided, "Falta o atributo obrigatório '{0}'."},
        {XMLValid::InvalidEmptyAttValue, "O atributo não pode estar vazio."},
        {XMLValid::ElementAlreadyExists, "O elemento '{0}' foi declarado mais de uma vez em DOCTYPE."},
        {XMLValid::MultipleIdAttrs, "O elemento '{0}' tem mais de um atributo identificador."},
        {XMLValid::UnknownEntityRefAttr, "O atributo '{0}' cita uma entidade desconhecida."},
        {XMLValid::BadEntityRefAttr, "O atributo '{0}' cita uma entidade que não pode ser usada ali."},
        {XMLValid::VC_EntityNotFound, "A entidade '{0}' não está declarada no arquivo."},
        {XMLValid::VC_IllegalRefInStandalone,
         "A entidade '{0}' vem de fora de um arquivo que se declara independente."},
        {XMLValid::ReusedIDValue, "O identificador '{0}' já foi usado."},
        {XMLValid::IDNotDeclared, "O identificador '{0}' é citado mas não existe no arquivo."},
        {XMLValid::EmptyNotValidForContent, "O elemento está vazio, mas precisa de conteúdo."},
        {XMLValid::AttNotDefinedForElement, "O atributo '{0}' não é permitido no elemento '{1}'."},
        {XMLValid::NoCharDataInCM, "Há texto onde só são permitidos elementos."},
        {XMLValid::DoesNotMatchEnumList,
         "O valor '{0}' do atributo '{1}' não está na lista de valores permitidos."},
        {XMLValid::AttrValNotName, "O valor '{0}' do atributo '{1}' não é um nome válido."},
        {XMLValid::NoMultipleValues, "O atributo '{0}' não permite mais de um valor."},
        {XMLValid::NotSameAsFixedValue, "O atributo '{0}' tem o valor '{1}', diferente do valor fixo '{2}'."},
        {XMLValid::ProhibitedAttributePresent, "O atributo '{0}' não é permitido aqui."},
        {XMLValid::IllegalXMLSpace, "Declaração 'xml:space' inválida."},
        {XMLValid::NillNotAllowed, "O elemento '{1}' não permite 'xsi:nil'."},
        {XMLValid::NilAttrNotEmpty, "O elemento '{0}' foi declarado nulo e deve estar vazio."},
        {XMLValid::FixedDifferentFromActual,
         "O conteúdo do elemento '{0}' é diferente do valor fixo do esquema."},
        {XMLValid::ElementNotQualified, "O elemento '{0}' deve pertencer ao espaço de nomes do esquema."},
        {XMLValid::ElementNotUnQualified, "O elemento '{0}' não deve pertencer a um espaço de nomes."},
        {XMLValid::NoAbstractInXsiType, "O tipo abstrato '{0}' não pode ser usado em 'xsi:type'."},
        {XMLValid::NoDirectUseAbstractElement,
         "O elemento '{0}' é abstrato e não pode ser usado diretamente."},
        {XMLValid::NoUseAbstractType, "O tipo do elemento '{0}' é abstrato; indique um tipo em 'xsi:type'."},
        {XMLValid::BadXsiType, "O tipo '{0}' indicado em 'xsi:type' não existe no esquema."},
        {XMLValid::NonDerivedXsiType, "O tipo '{0}' indicado em 'xsi:type' não deriva do tipo do elemento."},
        {XMLValid::ElemNoSubforBlock, "O elemento '{0}' não permite substituição."},
        {XMLValid::TypeNoSubforBlock, "O tipo indicado em 'xsi:type' não pode substituir o do elemento."},
        {XMLValid::AttributeNotQualified, "O atributo '{0}' deve pertencer ao espaço de nomes do esquema."},
        {XMLValid::AttributeNotUnQualified, "O atributo '{0}' não deve pertencer a um espaço de nomes."},
        {XMLValid::IC_FieldMultipleMatch, "O campo da chave tem mais de um valor no mesmo registro."},
        {XMLValid::IC_AbsentKeyValue, "O elemento '{0}' não tem valor para a sua chave."},
        {XMLValid::IC_KeyNotEnoughValues, "O elemento '{0}' não tem todos os valores da chave '{1}'."},
        {XMLValid::IC_KeyMatchesNillable, "A chave do elemento '{0}' é um campo que pode ser nulo."},
        {XMLValid::IC_KeyRefOutOfScope, "O elemento '{0}' cita uma chave fora do seu alcance."},
        {XMLValid::IC_DuplicateUnique, "O elemento '{0}' repete um valor que deve ser único."},
        {XMLValid::IC_DuplicateKey, "O elemento '{0}' repete um valor de chave."},
        {XMLValid::IC_KeyNotFound, "O elemento '{0}' cita uma chave que não existe no arquivo."},
    };
    return messages;
}

// The same for the other faults of a document.
const std::unordered_map<unsigned int, std::string_view>& documentMessages() {
    static const std::unordered_map<unsigned int, std::string_view> messages{
        {XMLErrs::NotationAlreadyExists, "A notação '{0}' foi declarada mais de uma vez."},
        {XMLErrs::AttListAlreadyExists,
         "O atributo '{0}' foi declarado mais de uma vez para o elemento '{1}'."},
        {XMLErrs::ContradictoryEncoding,
         "A codificação '{0}' declarada no arquivo não é a que ele usa; a declaração foi ignorada."},
        {XMLErrs::UndeclaredElemInAttList,
         "O elemento '{0}' tem atributos declarados, mas não foi declarado."},
        {XMLErrs::EntityExpansionLimitExceeded,
         "O arquivo usa entidades vezes demais; o limite é de {0} usos."},
        {XMLErrs::RecursiveEntity, "Uma entidade do arquivo contém a si mesma."},
    };
    return messages;
}

} // namespace

std::int32_t faultCode(unsigned int number, const XMLCh* domain, XMLErrorReporter::ErrTypes type) {
    if (type == XMLErrorReporter::ErrType_Fatal) {
        return xmlcode::notWellFormed;
    }
    if (isValidityDomain(domain)) {
        if (number == XMLValid::DatatypeError || number == XMLValid::DatatypeValidationFailure) {
            return xmlcode::valueRefused;
        }
        if (number == XMLValid::ElementNotDefined || number == XMLValid::GrammarNotFound ||
            number == XMLValid::ElementNotValidForContent || number == XMLValid::SimpleTypeHasChild) {
            return xmlcode::elementNotAllowed;
        }
        return static_cast<std::int32_t>(0xC00CE000U | number);
    }
    // What a data type throws at a value comes with the domain of exceptions.
    return XMLString::equals(domain, XMLUni::fgXMLErrDomain) ? static_cast<std::int32_t>(0xC00CD000U | number)
                                                             : xmlcode::valueRefused;
}

std::string faultMessage(unsigned int number, const XMLCh* domain, const XMLCh* text) {
    std::string message = toUtf8(text);
    const auto& messages = isValidityDomain(domain) ? validityMessages() : documentMessages();
    const bool isKnown = isValidityDomain(domain) || XMLString::equals(domain, XMLUni::fgXMLErrDomain);
    const auto found = messages.find(number);
    if (!isKnown || found == messages.end()) {
        return message;
    }
    std::string translated(found->second);
    const std::vector<std::string> pieces = quotedPieces(message);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        translated = tv::text::replaceAll(translated, "{" + std::to_string(i) + "}", pieces[i]);
    }
    return translated;
}

namespace {

// Bytes of an open file for the parser. The file stays its source's: the library forgets its streams when
// memory runs out.
class FileStream : public BinInputStream {
public:
    explicit FileStream(const files::Descriptor& stream) noexcept
        : stream_(stream) {}
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    XMLFilePos curPos() const override { return position_; }
    XMLSize_t readBytes(XMLByte* const toFill, const XMLSize_t maxToRead) override {
        const std::ptrdiff_t got = stream_.read(toFill, maxToRead);
        if (got < 0) {
            throw ReadFailure{std::generic_category().message(errno) + "."};
        }
        position_ += static_cast<XMLFilePos>(got);
        return static_cast<XMLSize_t>(got);
    }
    const XMLCh* getContentType() const override { return nullptr; }

private:
    const files::Descriptor& stream_;
    XMLFilePos position_ = 0;
};

} // namespace

FileSource::FileSource(const std::filesystem::path& file)
    : file_(file) {
    const std::u16string id = toUtf16(files::toText(file));
    setSystemId(id.c_str());
}

bool FileSource::open(XmlFault& fault) {
    const auto refuse = [&](std::int32_t code, std::string_view reason) {
        fault =
            XmlFault{code,
                     "Não foi possível ler o arquivo '" + files::toText(file_) + "': " + std::string(reason),
                     {}};
        return false;
    };
    std::error_code code;
    const auto status = std::filesystem::status(file_, code);
    if (status.type() == std::filesystem::file_type::not_found) {
        return refuse(xmlcode::fileNotFound, "o arquivo não existe.");
    }
    if (status.type() == std::filesystem::file_type::none) {
        return refuse(xmlcode::fileNotReadable, code.message() + ".");
    }
    if (std::filesystem::is_directory(status)) {
        return refuse(xmlcode::fileNotReadable, "é uma pasta.");
    }
    if (!std::filesystem::is_regular_file(status)) {
        // A pipe would have the parse wait for whoever writes into it.
        return refuse(xmlcode::fileNotReadable, "não é um arquivo comum.");
    }
    stream_.emplace(file_, O_RDONLY);
    if (!*stream_) {
        const int reason = errno;
        stream_.reset();
        return refuse(xmlcode::fileNotReadable, reason == EACCES
                                                    ? "sem permissão de leitura."
                                                    : std::generic_category().message(reason) + ".");
    }
    return true;
}

BinInputStream* FileSource::makeStream() const {
    return stream_ && !std::exchange(isGiven_, true) ? new FileStream(*stream_) : nullptr;
}

} // namespace tv::xerces
