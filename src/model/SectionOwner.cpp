#include "model/SectionOwner.h"

#include "platform/text.h"

namespace tv {

bool SectionOwner::isValido(std::string_view /*valor*/) const {
    return true;
}

void SectionOwner::setNome(std::string_view nome) {
    nome_ = text::trim(nome);
}

void SectionOwner::setTag(std::string_view tag) {
    tag_ = text::trim(tag);
}

void SectionOwner::setGrupo(std::string_view nome, std::string_view tag) {
    nomeGrupo_ = text::trim(nome);
    tagGrupo_ = text::trim(tag);
}

} // namespace tv
