#pragma once
// Small behaviours the screens give their fields: what Enter does in a field,
// and fields that select their whole text when they get the focus so that the
// operator types over them.
#include <functional>

class QWidget;
class QLineEdit;

namespace Controles {

// Enter (either key) in the field runs the action. With quitarTecla the key
// goes no further; otherwise the field receives it as well.
void AlPulsarEnter(QWidget* campo, std::function<void()> accion, bool quitarTecla = true);

// The whole text is selected each time the field gets the focus.
void SeleccionarAlEnfocar(QLineEdit* campo);

} // namespace Controles
