#pragma once

/// Unsaved work of a program that did not come to its end.
namespace tv::recuperacao {

/// Takes over what was left behind, by this program or others that are gone, and asks whether it is to come
/// back: on Sim each window opens with its work, unsaved; on Não it is set aside for some days. With nothing
/// left behind nothing happens.
void oferece();

} // namespace tv::recuperacao
