#pragma once

/// One look and one vocabulary for all grids, and the update in the field.
namespace tv {
class Grade;
}

namespace tv::controleLib {

/// Gives the grid the program's texts, fonts and colours.
void gridInitializeLayout(Grade& grade);
/// Removes the selected rows, or the active one, after a question.
void removeRow(Grade& grade);
/// Prints the grid, or shows its print preview.
void imprimiGrid(Grade& grade, bool visualizar);
/// Moves a new catalog and new schemas from a folder of the user's choice into place, keeps the old files
/// under dated names and offers a restart.
void atualizaSistema();

} // namespace tv::controleLib
