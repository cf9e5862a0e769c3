#include "common/NomesDeArquivo.h"

#include "platform/text.h"

namespace tv::nomes {

bool tituloValido(std::string_view titulo) {
    return titulo.find_first_of("|><\"?*:/\\") == std::string_view::npos;
}

std::string comExtensaoXml(std::string_view nome) {
    std::string completo(nome);
    if (text::upper(nome).find(".XML") == std::string::npos) {
        completo += ".xml";
    }
    return completo;
}

} // namespace tv::nomes
