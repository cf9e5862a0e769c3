#include "Catalogo.h"
#include "Saida.h"
#include "comandos.h"

namespace boletos {

int layouts(const std::filesystem::path& pasta) {
    const Catalogo catalogo(pasta);
    const auto simOuNao = [](bool valor) { return valor ? "sim" : "nao"; };
    Saida saida({});
    for (const auto& boleto : catalogo.boletos()) {
        saida.escreve(boleto->getTag() + "\t" + boleto->getVersao() + "\t" + boleto->getNome() + "\t" +
                      simOuNao(boleto->hasTramador()) + "\t" + simOuNao(boleto->hasValidador()) + "\n");
    }
    saida.termina();
    return status::valido;
}

} // namespace boletos
