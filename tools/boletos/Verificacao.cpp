#include "Verificacao.h"

#include "logging/Routine.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace boletos {

namespace {

using Arquivos = std::vector<std::filesystem::path>;
using Layout = std::shared_ptr<const tv::clsBoleto>;

ArquivoValidado verifica(tv::clsValidador& validador, const std::filesystem::path& arquivo,
                         const Layout& layout) {
    const auto antes = validador.getResultado();
    const auto inicio = std::chrono::steady_clock::now();
    const bool semResultado = validador.isValido(arquivo, layout);
    ArquivoValidado validado;
    validado.tempo = std::chrono::steady_clock::now() - inicio;
    validado.arquivo = arquivo;
    validado.avisos = validador.getAvisos();
    // A run that could not begin leaves the findings of the file before.
    const bool rodou = validador.getResultado() != antes;
    validado.resultados = rodou ? validador.getResultado() : std::make_shared<const tv::Resultados>();
    if (!rodou && validado.avisos.empty()) {
        validado.avisos.emplace_back("O nome do arquivo está em branco");
    }
    validado.ilegivel = validador.arquivoIlegivel();
    validado.valido = semResultado && validado.verificado();
    return validado;
}

/// One file after the other, by one validator.
class EmSerie : public Verificacao {
public:
    EmSerie(const Arquivos& arquivos, Layout layout)
        : arquivos_(arquivos)
        , layout_(std::move(layout)) {}

    ArquivoValidado proximo() override { return verifica(validador_, arquivos_.at(feitos_++), layout_); }

private:
    const Arquivos& arquivos_;
    Layout layout_;
    tv::clsValidador validador_;
    std::size_t feitos_ = 0;
};

/// Several files at a time, each by a validator of its own; one validator joins their runs in the files'
/// order.
class EmParalelo : public Verificacao {
public:
    EmParalelo(const Arquivos& arquivos, Layout layout, std::size_t jobs)
        : arquivos_(arquivos)
        , layout_(std::move(layout))
        , adiante_(4 * jobs) {
        for (std::size_t i = 0; i < std::min(jobs, arquivos.size()); ++i) {
            fios_.emplace_back([this] { trabalha(); });
        }
    }
    ~EmParalelo() override {
        {
            const std::lock_guard tranca(tranca_);
            acabou_ = true;
        }
        haLugar_.notify_all();
        for (std::thread& fio : fios_) {
            fio.join();
        }
    }
    EmParalelo(const EmParalelo&) = delete;
    EmParalelo& operator=(const EmParalelo&) = delete;

    ArquivoValidado proximo() override {
        std::unique_lock tranca(tranca_);
        haFeito_.wait(tranca, [this] { return feitos_.contains(entregues_); });
        Feito feito = std::move(feitos_.extract(entregues_).mapped());
        ++entregues_;
        tranca.unlock();
        haLugar_.notify_all();
        if (feito.falha) {
            std::rethrow_exception(feito.falha);
        }
        todos_.junta(*feito.validador);
        return std::move(feito.validado);
    }

private:
    struct Feito {
        std::unique_ptr<tv::clsValidador> validador;
        ArquivoValidado validado;
        std::exception_ptr falha;
    };

    void trabalha() {
        for (std::size_t qual = pega(); qual < arquivos_.size(); qual = pega()) {
            Feito feito;
            try {
                feito.validador = std::make_unique<tv::clsValidador>(tv::clsValidador::Estagios::UmAposOutro);
                feito.validado = verifica(*feito.validador, arquivos_[qual], layout_);
            } catch (...) {
                feito.falha = std::current_exception();
            }
            const std::lock_guard tranca(tranca_);
            feitos_.emplace(qual, std::move(feito));
            haFeito_.notify_one();
        }
    }

    /// The next file to be checked; the count of files when there is nothing more to do. Waits while too many
    /// checks lie ready.
    std::size_t pega() {
        std::unique_lock tranca(tranca_);
        haLugar_.wait(tranca, [this] { return acabou_ || pegos_ < entregues_ + adiante_; });
        return acabou_ || pegos_ >= arquivos_.size() ? arquivos_.size() : pegos_++;
    }

    const Arquivos& arquivos_;
    Layout layout_;
    std::size_t adiante_; ///< How many files may be checked before they are asked for.
    tv::clsValidador todos_;
    std::mutex tranca_;
    std::condition_variable haFeito_;
    std::condition_variable haLugar_;
    std::map<std::size_t, Feito> feitos_;
    std::size_t pegos_ = 0;
    std::size_t entregues_ = 0;
    bool acabou_ = false;
    std::vector<std::thread> fios_;
};

} // namespace

std::unique_ptr<Verificacao> Verificacao::cria(const Arquivos& arquivos, Layout layout, int jobs) {
    if (jobs > 1 && arquivos.size() > 1 && !tv::Routine::isLogged()) {
        return std::make_unique<EmParalelo>(arquivos, std::move(layout), static_cast<std::size_t>(jobs));
    }
    return std::make_unique<EmSerie>(arquivos, std::move(layout));
}

} // namespace boletos
