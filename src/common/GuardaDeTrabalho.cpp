#include "common/GuardaDeTrabalho.h"

#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/Files.h"

#include <algorithm>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace tv {

namespace {

/// Between two of them a write can be given up.
constexpr std::size_t maiorPedaco = std::size_t{1} << 20U;

void emPedacos(std::string_view bytes, std::vector<std::string_view>& pedacos) {
    for (; !bytes.empty(); bytes.remove_prefix(std::min(maiorPedaco, bytes.size()))) {
        pedacos.push_back(bytes.substr(0, maiorPedaco));
    }
}

} // namespace

GuardaDeTrabalho::~GuardaDeTrabalho() {
    espera();
}

void GuardaDeTrabalho::espera() noexcept {
    if (escrita_.joinable()) {
        escrita_.join();
    }
}

void GuardaDeTrabalho::guarda(EtiquetaDeTrabalho etiqueta, std::function<PecasDeTrabalho()> conteudo) {
    if (ocupada_) {
        throw Error(errc::invalidCall, "GuardaDeTrabalho", "O trabalho ainda está sendo guardado");
    }
    espera();
    if (!lugar_.empty() && !files::exists(lugar_)) {
        pasta_->libera(std::exchange(lugar_, {})); // nothing came of it, or somebody took it away
    }
    if (lugar_.empty()) {
        pasta_ = PastaDeGuarda::doPrograma();
        lugar_ = pasta_->novoLugar();
    }
    falha_.clear();
    desiste_ = false;
    ocupada_ = true;
    try {
        escrita_ = std::thread(
            [this, etiqueta = std::move(etiqueta), conteudo = std::move(conteudo), lugar = lugar_]() mutable {
                try {
                    escreve(etiqueta, std::exchange(conteudo, {}), lugar);
                } catch (const std::exception& erro) {
                    falha_ = logText(erro);
                }
                ocupada_ = false;
            });
    } catch (const std::system_error&) {
        ocupada_ = false;
        throw;
    }
}

void GuardaDeTrabalho::escreve(const EtiquetaDeTrabalho& etiqueta,
                               const std::function<PecasDeTrabalho()>& conteudo, const fs::path& lugar) {
    const PecasDeTrabalho pecas = conteudo();
    if (desiste_) {
        return;
    }
    const arquivoDeTrabalho::Moldura moldura = arquivoDeTrabalho::moldura(etiqueta, pecas);
    std::vector<std::string_view> pedacos{moldura.inicio};
    for (const auto& peca : pecas) {
        emPedacos(*peca, pedacos);
    }
    pedacos.emplace_back(moldura.fim);
    fs::path parcial = lugar;
    parcial.replace_extension(".parcial");
    bool pronto = false;
    try {
        pronto = files::writeThrough(parcial, pedacos, [this] { return !desiste_; });
        if (pronto && !desiste_) {
            fs::rename(parcial, lugar);
            return;
        }
    } catch (...) {
        std::error_code ignorada;
        fs::remove(parcial, ignorada);
        throw;
    }
    std::error_code ignorada;
    fs::remove(parcial, ignorada);
}

std::string GuardaDeTrabalho::falha() {
    return ocupada_ ? std::string() : std::exchange(falha_, {});
}

void GuardaDeTrabalho::adota(std::shared_ptr<PastaDeGuarda> pasta, fs::path lugar) {
    larga();
    pasta_ = std::move(pasta);
    lugar_ = std::move(lugar);
}

void GuardaDeTrabalho::larga() noexcept {
    desiste_ = true;
    espera();
    falha_.clear();
    if (!lugar_.empty()) {
        pasta_->libera(std::exchange(lugar_, {}));
    }
}

} // namespace tv
