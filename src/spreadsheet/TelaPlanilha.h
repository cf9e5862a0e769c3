#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tv {

/// The progress window of an operation on workbooks, as far as the operation knows it. It goes off the screen
/// by `destroy` only: one that is dropped without it stays open.
class ProgressoPlanilha {
public:
    virtual ~ProgressoPlanilha() = default;
    /// Shows a stage; `valor` is the bar's position, `operacao` chooses the picture. It comes for every field
    /// of every record, so it must cost next to nothing.
    virtual void setMsg(std::string_view titulo, std::string_view descricao, int valor, int operacao) = 0;
    /// Steps of the bar, at least one.
    virtual void setMax(std::size_t maximo) = 0;
    /// Moves the bar by one step.
    virtual void incProgress() = 0;
    virtual void destroy() = 0;
};

/// What an operation on workbooks shows to its user.
class TelaPlanilha {
public:
    virtual ~TelaPlanilha() = default;
    virtual std::unique_ptr<ProgressoPlanilha> criaProgresso() = 0;
    /// A message with the information icon; waits until it is read.
    virtual void informa(const std::string& texto, const std::string& titulo) = 0;
};

} // namespace tv
