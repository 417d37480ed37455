#pragma once
// Small behaviours the screens give their fields: what Enter does in a field,
// and fields that select their whole text when they get the focus so that the
// operator types over them.
#include <QString>
#include <functional>

class QWidget;
class QLineEdit;
class QPushButton;

namespace Controles {

// Enter (either key) in the field runs the action. With quitarTecla the key
// goes no further; otherwise the field receives it as well.
void AlPulsarEnter(QWidget* campo, std::function<void()> accion, bool quitarTecla = true);

// From now on Enter (either key) on a focused push button presses it, as the
// space bar does, on every screen of the program.
void EnterComoEspacio();
// The whole text is selected each time the field gets the focus.
void SeleccionarAlEnfocar(QLineEdit* campo);

// Gives a control its design name as object name ("INCLUIR", or "Text2(n)"
// for the element n of a control array) and the name that screen readers and
// UI automation announce: its caption or its label.
void Nombrar(QWidget* control, const QString& nombre, const QString& accesible);
void Nombrar(QWidget* control, const QString& arreglo, int indice, const QString& accesible);

// A button of a screen at its place, named by its design name and caption.
// Enter presses it through EnterComoEspacio, as on every other screen.
QPushButton* Boton(QWidget* padre, const QString& nombre, const QString& titulo, int x, int y, int w, int h = 30);

} // namespace Controles
