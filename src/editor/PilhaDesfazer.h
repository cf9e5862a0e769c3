#pragma once

#include "editor/UndoElement.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>

namespace tv {

/// A change of a text: `removidos` units at `inicio` gave way to `inserido`.
struct MudancaTexto {
    std::size_t inicio = 0;
    std::size_t removidos = 0;
    std::u16string inserido;
};

/// What a text box has to do to come from one state to the next: a removal or an insertion.
struct PassoTexto {
    bool remocao = false;
    std::int32_t inicio = 0;
    std::int32_t tamanho = 0; ///< Units to remove, or those of `trecho`.
    std::u16string trecho;    ///< What is put in.
};

/// A state on a stack, with what the recorder knows about it.
struct EstadoTexto : UndoElement {
    bool parcial = false;  ///< Half of a replacement: the user's step ends with the next state.
    std::size_t custo = 0; ///< Units that the state brought in.
};

/// The states of an edited text: the present one is the last of `undoStack`, the undone ones lie on
/// `redoStack`. Each state differs from the one before it by one removal or one insertion.
///
/// Typing is taken together by words, runs of deletions into one; a pause, another place, a line end or a
/// paste starts a new state. A replacement is two states that belong together. The oldest states go when
/// there are too many, or when they have brought in too much text; what the user did last can always be
/// undone.
class PilhaDesfazer {
public:
    using Instante = std::chrono::milliseconds;

    /// A pause from which on typing is a step of its own.
    static constexpr Instante pausa{1500};
    static constexpr std::size_t maxGrupo = 64; ///< Units of a run that becomes one state.

    explicit PilhaDesfazer(std::size_t maxEstados = 5000, std::size_t maxUnidades = std::size_t{32} << 20U)
        : maxEstados_(maxEstados)
        , maxUnidades_(maxUnidades) {}

    std::deque<EstadoTexto> undoStack; ///< Oldest first.
    std::deque<EstadoTexto> redoStack; ///< Last undone last.

    /// Starts anew with a text as the only state.
    void inicia(Texto texto);
    /// The text after the last change that was told.
    const Texto& atual() const noexcept { return atual_; }

    /// A change that becomes a state. What stays the same at both ends of it does not count. `agora` is any
    /// clock that only goes forward.
    void registra(MudancaTexto mudanca, Instante agora);
    /// A change that is no step of the user's.
    void acompanha(const MudancaTexto& mudanca);

    /// What leads from the present state to the one before it. Needs two states. Throws Error 5 when the
    /// states do not go together.
    PassoTexto passoUndo() const;
    /// What leads from the present state to the last undone one. Needs one of each.
    PassoTexto passoRedo() const;
    /// The present state goes over to `redoStack`, and back.
    void desfeito();
    void refeito();

private:
    void aplica(const MudancaTexto& mudanca);
    void registraUm(const MudancaTexto& mudanca, Instante agora, bool parcial);
    bool juntaAoGrupo(const MudancaTexto& mudanca, Instante agora);
    void abreGrupo(const MudancaTexto& mudanca, Instante agora);
    void empilha(const MudancaTexto& mudanca, bool parcial);
    void limita();

    /// The run that the present state stands for, in the text of the state before it.
    struct Grupo {
        bool aberto = false;
        bool remocao = false;
        std::size_t inicio = 0;
        std::size_t removidos = 0;
        std::u16string inserido;
        Instante ultimo{0};
    };

    std::size_t maxEstados_;
    std::size_t maxUnidades_;
    std::size_t unidades_ = 0;
    Texto atual_;
    Grupo grupo_;
};

} // namespace tv
