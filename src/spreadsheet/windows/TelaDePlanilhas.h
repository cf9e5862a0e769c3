#pragma once

#include "spreadsheet/TelaPlanilha.h"

namespace tv {

/// What an export or import shows in the windows: frmMensagem and message boxes.
///
/// A stage comes for every field; the window hears of it where it can be seen, that is when the stage is
/// another one, before the bar moves, and else at most every 30 ms.
class TelaDePlanilhas final : public TelaPlanilha {
public:
    std::unique_ptr<ProgressoPlanilha> criaProgresso() override;
    void informa(const std::string& texto, const std::string& titulo) override;
};

} // namespace tv
