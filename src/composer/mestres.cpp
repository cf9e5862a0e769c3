#include "composer/mestres.h"

#include "platform/Error.h"

namespace tv::mestres {
namespace {

const clsSecao& mestreDe(const SectionOwner& owner) {
    if (owner.getSecaoMestre() == nullptr) {
        throw Error(errc::objectNotSet, "frmTramador", "Não há seção mestre em " + owner.getTag());
    }
    return *owner.getSecaoMestre();
}

const GradeSecao& gradeDoGrupo(const Documento& documento, std::size_t posicao) {
    const clsSecao& grupo = *documento.layout().getSecoes().Item(posicao);
    return documento.grade(documento.layout().getTag() + "_" + grupo.getTag() + "_" +
                           mestreDe(grupo).getTag());
}

bool vazio(const RecordSet& dados) {
    return dados.EOF_() && dados.BOF_();
}

} // namespace

Grades acha(const Documento& documento) {
    const clsBoleto& layout = documento.layout();
    const SectionOwner& noAtual = *documento.estado.noAtual;
    const std::string base = layout.getTag() + "_";
    if (&noAtual == &layout || layout.getSecaoMestre() != nullptr) {
        const GradeSecao& unica = documento.grade(base + mestreDe(layout).getTag());
        return {&unica, &unica};
    }
    if (!layout.getSecoes().Item(2)->getCampos().empty()) {
        const GradeSecao& unica = documento.grade(base + noAtual.getTag());
        return {&unica, &unica};
    }
    return {&gradeDoGrupo(documento, 1), &gradeDoGrupo(documento, 2)};
}

bool temDados(const Documento& documento) {
    const Grades grades = acha(documento);
    return !vazio(*grades.a->dados) || !vazio(*grades.b->dados);
}

Contagem conta(const Grades& grades) {
    return {grades.a->dados->Clone()->RecordCount(), grades.b->dados->Clone()->RecordCount()};
}

} // namespace tv::mestres
