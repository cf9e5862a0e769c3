#include "platform/XmlLibrary.h"

#include "platform/text.h"

#include <libxml/xmlerror.h>

namespace tv::xml {
namespace {

/// What people read instead of the parser's own text; "{0}" is the name that the fault is about.
const std::unordered_map<int, std::string_view>& parserMessages() {
    static const std::unordered_map<int, std::string_view> messages{
        {XML_ERR_DOCUMENT_EMPTY, "O documento está vazio ou não é XML."},
        {XML_ERR_DOCUMENT_END, "Há algo depois do fim do documento."},
        {XML_ERR_INVALID_HEX_CHARREF, "A referência a um caractere é inválida."},
        {XML_ERR_INVALID_DEC_CHARREF, "A referência a um caractere é inválida."},
        {XML_ERR_INVALID_CHARREF, "A referência a um caractere é inválida."},
        {XML_ERR_INVALID_CHAR, "Há um caractere que não é permitido em XML."},
        {XML_ERR_ENTITYREF_NO_NAME, "Há um '&' sem o nome de uma entidade."},
        {XML_ERR_ENTITYREF_SEMICOL_MISSING, "Falta o ';' de uma referência a uma entidade."},
        {XML_ERR_UNDECLARED_ENTITY, "A entidade '{0}' não está declarada no documento ou está fora dele."},
        {XML_WAR_UNDECLARED_ENTITY, "A entidade '{0}' não está declarada no documento ou está fora dele."},
        {XML_ERR_UNPARSED_ENTITY, "A entidade '{0}' não é um texto."},
        {XML_ERR_ENTITY_IS_EXTERNAL, "A entidade '{0}' está fora do documento e não é lida."},
        {XML_ERR_ENTITY_LOOP, "As entidades se citam em círculo ou crescem demais."},
        {XML_ERR_UNKNOWN_ENCODING, "A codificação declarada não é conhecida."},
        {XML_ERR_UNSUPPORTED_ENCODING, "A codificação declarada não é conhecida."},
        {XML_ERR_INVALID_ENCODING,
         "Há bytes que não são da codificação do documento (UTF-8, se não declara outra)."},
        {XML_I18N_CONV_FAILED, "Há bytes que não são da codificação do documento."},
        {XML_ERR_LT_IN_ATTRIBUTE, "O valor de um atributo contém '<'."},
        {XML_ERR_ATTRIBUTE_NOT_STARTED, "O valor de um atributo não está entre aspas."},
        {XML_ERR_ATTRIBUTE_NOT_FINISHED, "O valor de um atributo não termina."},
        {XML_ERR_ATTRIBUTE_WITHOUT_VALUE, "O atributo '{0}' não tem valor."},
        {XML_ERR_ATTRIBUTE_REDEFINED, "O atributo '{0}' aparece mais de uma vez."},
        {XML_NS_ERR_ATTRIBUTE_REDEFINED, "O atributo '{0}' aparece mais de uma vez."},
        {XML_NS_ERR_UNDEFINED_NAMESPACE, "O prefixo '{0}' não está declarado."},
        {XML_ERR_COMMENT_NOT_FINISHED, "Um comentário não termina."},
        {XML_ERR_CDATA_NOT_FINISHED, "Uma seção CDATA não termina."},
        {XML_ERR_PI_NOT_FINISHED, "Uma instrução de processamento não termina."},
        {XML_ERR_DOCTYPE_NOT_FINISHED, "A declaração DOCTYPE está errada ou não termina."},
        {XML_ERR_MISPLACED_CDATA_END, "O texto contém ']]>'."},
        {XML_ERR_RESERVED_XML_NAME, "A declaração XML só pode estar no começo do documento."},
        {XML_ERR_XMLDECL_NOT_FINISHED, "A declaração XML está errada."},
        {XML_ERR_UNKNOWN_VERSION, "A versão de XML não é conhecida."},
        {XML_ERR_SPACE_REQUIRED, "Falta um espaço entre os atributos."},
        {XML_ERR_NAME_REQUIRED, "Falta o nome de um elemento ou atributo."},
        {XML_ERR_NAME_TOO_LONG, "Um nome ou um texto do documento é longo demais."},
        {XML_ERR_GT_REQUIRED, "Falta o '>' de uma tag."},
        {XML_ERR_TAG_NAME_MISMATCH, "A tag de fim não é a do elemento '{0}', que está aberto."},
        {XML_ERR_TAG_NOT_FINISHED, "O documento termina antes do elemento '{0}'."},
        {XML_ERR_INTERNAL_ERROR, "O documento não pôde ser lido; uma parte dele pode ser grande demais."},
        {XML_ERR_NO_MEMORY, "Falta memória para o documento."},
    };
    return messages;
}

/// The parser's sentence in Portuguese, or the empty text when there is none.
std::string translated(const xmlError& fault) {
    const bool ofParser = fault.domain == XML_FROM_PARSER || fault.domain == XML_FROM_NAMESPACE ||
                          fault.domain == XML_FROM_I18N || fault.domain == XML_FROM_IO;
    const auto found = parserMessages().find(fault.code);
    if (!ofParser || found == parserMessages().end()) {
        return {};
    }
    const std::string_view name = fault.str1 == nullptr ? "?" : view(bytes(fault.str1));
    return text::replaceAll(found->second, "{0}", name);
}

} // namespace

std::string faultText(const xmlError& fault) {
    std::string message = translated(fault);
    if (message.empty()) {
        message = view(bytes(fault.message));
        message.erase(message.find_last_not_of("\r\n ") + 1);
    }
    return fault.line > 0 ? "Linha " + std::to_string(fault.line) + ": " + message : message;
}

} // namespace tv::xml
