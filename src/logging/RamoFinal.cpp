#include "logging/RamoFinal.h"

#include "platform/XmlDocument.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace tv {

namespace {

std::string fechoDe(const std::string& nome) {
    return text::toLatin1Markup("</" + nome + ">");
}

/// What stands in a document beside its elements, and what ends it.
struct Trecho {
    std::string_view inicio;
    std::string_view fim;
};
constexpr std::array<Trecho, 3> alheios{{{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};

/// Where the last start tag of each depth stands, in bytes as our own writer makes them: every element has
/// both its tags, and neither "<" nor ">" stands in a value. Nothing for a document with a DOCTYPE, whose
/// entities hold what they please.
std::vector<std::size_t> ultimosInicios(std::string_view bytes) {
    std::vector<std::size_t> inicios;
    std::size_t profundidade = 0;
    for (std::size_t at = bytes.find('<'); at < bytes.size(); at = bytes.find('<', at + 1)) {
        const std::string_view resto = bytes.substr(at);
        const auto* alheio = std::find_if(alheios.begin(), alheios.end(), [&resto](const Trecho& trecho) {
            return resto.starts_with(trecho.inicio);
        });
        if (alheio != alheios.end()) {
            at = std::min(bytes.find(alheio->fim, at), bytes.size() - 1);
        } else if (resto.starts_with("<!")) {
            return {};
        } else if (resto.starts_with("</")) {
            --profundidade;
        } else {
            inicios.resize(std::max(inicios.size(), profundidade + 1));
            inicios[profundidade++] = at;
        }
    }
    return inicios;
}

} // namespace

void RamoFinal::le(const XmlDocument& documento, std::string_view bytes,
                   const std::filesystem::path& arquivo) {
    niveis_.clear();
    nomes_.clear();
    const std::vector<std::size_t> inicios = ultimosInicios(bytes);
    for (XmlNode no = documento.documentElement(); no;) {
        Nivel nivel{std::string(no.name()), fechoDe(std::string(no.name())), 0, 0};
        if (niveis_.size() < inicios.size()) {
            const std::size_t inicio = inicios[niveis_.size()];
            localizaFim(nivel, bytes.substr(inicio, bytes.find('>', inicio) - inicio), inicio);
        }
        niveis_.push_back(std::move(nivel));
        const std::vector<XmlNode> filhos = no.childElements();
        no = filhos.empty() ? XmlNode() : filhos.back();
    }
    std::string fim;
    std::for_each(niveis_.rbegin(), niveis_.rend(), [&](const Nivel& nivel) { fim += nivel.fecho; });
    if (!bytes.ends_with(fim)) {
        niveis_.clear();
        return;
    }
    for (const XmlNode& elemento : documento.selectNodes("//*")) {
        nomes_.insert(std::string(elemento.name()));
    }
    arquivo_ = arquivo;
    tamanho_ = bytes.size();
    marca_ = files::stamp(arquivo);
}

void RamoFinal::localizaFim(Nivel& nivel, std::string_view tag, std::size_t inicio) const {
    constexpr std::string_view atributo = " fim=\"";
    const std::size_t at = tag.find(atributo);
    if (at != std::string_view::npos) {
        nivel.fim = inicio + at + atributo.size();
        nivel.tamanhoDoFim = tag.find('"', at + atributo.size()) - at - atributo.size();
    }
}

bool RamoFinal::vale(const std::filesystem::path& arquivo) const {
    return !niveis_.empty() && arquivo == arquivo_ && files::exists(arquivo) &&
           files::stamp(arquivo) == marca_;
}

bool RamoFinal::passaPor(std::size_t nivel, const std::vector<std::string>& nomes) const {
    return nivel + nomes.size() <= niveis_.size() &&
           std::equal(nomes.begin(), nomes.end(), niveis_.begin() + static_cast<std::ptrdiff_t>(nivel),
                      [](const std::string& nome, const Nivel& um) { return nome == um.nome; });
}

void RamoFinal::acrescenta(std::size_t nivel, const std::string& nome, std::string_view bytes) {
    std::string fim;
    for (std::size_t i = nivel + 1; i-- > 0;) {
        fim += niveis_.at(i).fecho;
    }
    const std::size_t onde = tamanho_ - fim.size();
    escreve(onde, std::string(bytes) + fim);
    Nivel novo{nome, fechoDe(nome), 0, 0};
    localizaFim(novo, bytes.substr(0, bytes.find('>')), onde);
    niveis_.resize(nivel + 1);
    niveis_.push_back(std::move(novo));
    nomes_.insert(nome);
}

bool RamoFinal::marcaFim(std::size_t nivel, std::string_view hora) {
    const Nivel& um = niveis_.at(nivel);
    if (um.fim == 0 || um.tamanhoDoFim != hora.size()) {
        return false;
    }
    escreve(um.fim, hora);
    return true;
}

void RamoFinal::escreve(std::size_t onde, std::string_view bytes) {
    files::writeAt(arquivo_, onde, bytes);
    tamanho_ = std::max(tamanho_, onde + bytes.size());
    marca_ = files::stamp(arquivo_);
}

} // namespace tv
