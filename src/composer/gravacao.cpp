#include "composer/gravacao.h"

#include "composer/nomeDoArquivo.h"
#include "logging/Routine.h"
#include "platform/Files.h"

namespace tv::gravacao {

bool Operacoes::existe(const std::filesystem::path& arquivo) {
    return files::exists(arquivo);
}

std::string Operacoes::le(const std::filesystem::path& arquivo) {
    return files::readAll(arquivo);
}

void Operacoes::substitui(const std::filesystem::path& arquivo, std::string_view bytes) {
    files::replaceWhole(arquivo, bytes);
}

void Operacoes::apaga(const std::filesystem::path& arquivo) {
    files::remove(arquivo);
}

/// The old document is copied, not moved: a move would leave a moment without any document at `destino`.
void grava(const std::filesystem::path& temporario, const std::filesystem::path& destino,
           Operacoes& operacoes) {
    const std::string novo = operacoes.le(temporario);
    if (operacoes.existe(destino)) {
        operacoes.substitui(nomeDoArquivo::copia(destino), operacoes.le(destino));
    }
    operacoes.substitui(destino, novo);
    proceed([&] { operacoes.apaga(temporario); });
}

void grava(const std::filesystem::path& temporario, const std::filesystem::path& destino) {
    Operacoes operacoes;
    grava(temporario, destino, operacoes);
}

} // namespace tv::gravacao
