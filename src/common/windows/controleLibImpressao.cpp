#include "common/windows/Grade.h"
#include "common/windows/PrevisaoGrade.h"
#include "common/windows/controleLib.h"
#include "common/windows/frmMensagem.h"
#include "logging/Routine.h"

namespace tv::controleLib {

void imprimiGrid(Grade& grade, bool visualizar) {
    guarded("controleLib.imprimiGrid", [&] {
        if (visualizar) {
            PrevisaoGrade(grade, grade.window()).exec();
            return;
        }
        frmMensagem andamento;
        andamento.setMsg(QStringLiteral("Imprimindo Tabela"), grade.captionVisivel(), 0, 4);
        imprimeGrade(grade);
    });
}

} // namespace tv::controleLib
