#pragma once
// Every message box of the program goes through MsgBox, with the program's
// title, so that tests can answer them. Styles as the operators know them:
// 0 no icon, 16 critical, 32 question, 48 exclamation, 64 information;
// add 4 for the Yes/No buttons. Answers: 1 OK, 6 Yes, 7 No.
#include <QString>
#include <functional>

class FalloEjecucion;

namespace Mensajes {

constexpr int vbOK = 1;
constexpr int vbYes = 6;
constexpr int vbNo = 7;
constexpr int vbYesNo = 4;
constexpr int vbCritical = 16;
constexpr int vbQuestion = 32;
constexpr int vbExclamation = 48;
constexpr int vbInformation = 64;

extern const QString TituloPrograma;

int MsgBox(const QString& texto, int estilo = 0, const QString& titulo = TituloPrograma);

// Replaces the boxes (tests); an empty function puts the real boxes back.
using Manejador = std::function<int(const QString& texto, int estilo, const QString& titulo)>;
void Reemplazar(Manejador manejador);

// The run-time failure report: the failure's number and text in a critical box.
void Reporte_Fallo(const FalloEjecucion& fallo);

} // namespace Mensajes
