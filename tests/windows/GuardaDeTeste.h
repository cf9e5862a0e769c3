#pragma once

#include "common/PastaDeGuarda.h"
#include "common/TrabalhoGuardado.h"
#include "common/windows/GuardaDaJanela.h"
#include "platform/Files.h"
#include "windows/Janelas.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace tv::test {

/// Windows made while it lives look after their unsaved work every few milliseconds.
class GuardaApressada {
public:
    GuardaApressada() { GuardaDaJanela::intervalo = std::chrono::milliseconds(10); }
    ~GuardaApressada() { GuardaDaJanela::intervalo = antes_; }
    GuardaApressada(const GuardaApressada&) = delete;
    GuardaApressada& operator=(const GuardaApressada&) = delete;

private:
    std::chrono::milliseconds antes_ = GuardaDaJanela::intervalo;
};

/// Files of one kind in the folder for unsaved work.
inline std::vector<std::filesystem::path> guardados(const char* extensao = ".trabalho") {
    std::vector<std::filesystem::path> achados;
    std::error_code falha;
    std::filesystem::directory_iterator item(PastaDeGuarda::doPrograma()->pasta(), falha);
    for (; !falha && item != std::filesystem::directory_iterator(); item.increment(falha)) {
        if (item->path().extension() == extensao) {
            achados.push_back(item->path());
        }
    }
    return achados;
}

/// The one work that is kept, as soon as its content holds; its content is empty when that does not come
/// about.
inline TrabalhoGuardado guardadoCom(const std::function<bool(const TrabalhoGuardado&)>& serve) {
    TrabalhoGuardado lido;
    const bool achou = espera([&] {
        const auto lugares = guardados();
        if (lugares.size() != 1) {
            return false;
        }
        lido = arquivoDeTrabalho::le(files::readAll(lugares.front()));
        return serve(lido);
    });
    return achou ? lido : TrabalhoGuardado();
}

/// Time in which windows would have kept what there is to keep.
inline void deixaPassar() {
    QTest::qWait(120);
}

} // namespace tv::test
