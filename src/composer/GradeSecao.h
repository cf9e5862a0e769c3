#pragma once

#include "model/clsSecao.h"
#include "platform/KeyedCollection.h"
#include "platform/RecordSet.h"

#include <memory>
#include <string>

namespace tv {

/// One grid of the composer as it is without a screen: the section it stands for and the rows bound to it.
/// The layout that holds the section outlives it.
struct GradeSecao {
    std::string chave;                   ///< Its section's path of tags, joined by "_".
    std::string nome;                    ///< Name of the control: "<tag of the owner>_<tag of the section>".
    std::string tag;                     ///< The section's tag.
    std::string caption;                 ///< "&&" stands for one "&" on the screen.
    const SectionOwner* dono = nullptr;  ///< What the section stands directly below.
    const clsSecao* secao = nullptr;     ///< Has at least one field.
    const clsSecao* secaoTopo = nullptr; ///< The section directly below the layout in which it lies, or it.
    std::shared_ptr<RecordSet> dados;    ///< What the grid shows; never null.
};

/// The grids of a document in the order of the layout's walk, under their keys.
using Grades = KeyedCollection<std::shared_ptr<GradeSecao>>;
/// A document's rows, a record set for each section with fields, under the sections' paths of tags.
using RecordSets = KeyedCollection<std::shared_ptr<RecordSet>>;

} // namespace tv
