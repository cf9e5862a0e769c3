#include "spreadsheet/windows/TelaDePlanilhas.h"

#include "common/windows/Espera.h"
#include "common/windows/frmMensagem.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"

#include <QElapsedTimer>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace tv {

namespace {

constexpr qint64 intervalo = 30; // ms

class Progresso final : public ProgressoPlanilha {
public:
    Progresso() = default;
    /// An operation that failed leaves the window behind.
    ~Progresso() override {
        if (janela_) {
            frmMensagem::abandona(std::move(janela_));
        }
    }
    Progresso(const Progresso&) = delete;
    Progresso& operator=(const Progresso&) = delete;

    void setMsg(std::string_view titulo, std::string_view descricao, int valor, int operacao) override {
        const bool outraEtapa = titulo != titulo_;
        titulo_ = titulo;
        descricao_ = descricao;
        valor_ = valor;
        operacao_ = operacao;
        pendente_ = true;
        if (outraEtapa || !mostrada_.isValid() || mostrada_.elapsed() >= intervalo) {
            mostra();
        }
    }
    void setMax(std::size_t maximo) override {
        mostra();
        janela_->setMax(static_cast<int>(maximo));
    }
    void incProgress() override {
        mostra();
        janela_->incProgress();
    }
    void destroy() override {
        janela_->destroy();
        janela_.reset();
        espera_.reset();
    }

private:
    void mostra() {
        if (pendente_) {
            pendente_ = false;
            mostrada_.start();
            janela_->setMsg(paraQt(titulo_), paraQt(descricao_), static_cast<std::int16_t>(valor_),
                            operacao_);
        }
    }

    std::optional<Espera> espera_{std::in_place};
    std::unique_ptr<frmMensagem> janela_ = std::make_unique<frmMensagem>();
    std::string titulo_; // of the stage that was told last
    std::string descricao_;
    int valor_ = 0;
    int operacao_ = 0;
    bool pendente_ = false; // told, but not shown
    QElapsedTimer mostrada_;
};

} // namespace

std::unique_ptr<ProgressoPlanilha> TelaDePlanilhas::criaProgresso() {
    return std::make_unique<Progresso>();
}

void TelaDePlanilhas::informa(const std::string& texto, const std::string& titulo) {
    mensagem::mostra(paraQt(texto), mensagem::Icone::Informacao, paraQt(titulo));
}

} // namespace tv
