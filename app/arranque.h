#pragma once
// Start of the program: the deployment settings, the application object that
// turns any failure into the run-time report, and the main window with LOGIN.
#include "despliegue.h"

#include <QApplication>
#include <QDate>
#include <functional>

class MDIForm1;

// The command line's own answers, given on the terminal before anything needs
// a display: -h/--help and -v/--version. The program's exit status when one
// of them was asked; -1 when the program is to start.
int Responde_Opciones(int argc, char** argv);

// The deployment settings file (XDG config location, ControlDePagos/control-pagos.conf).
// Without one: the embedded server on a file in the XDG data location, receipts
// in ~/RECIBOS, the built-in PDF printer.
Despliegue Lee_Despliegue();

class Aplicacion : public QApplication {
public:
    Aplicacion(int& argc, char** argv);
    // Any failure that reaches the top shows the run-time report and ends the
    // program with a non-zero status.
    bool notify(QObject* receptor, QEvent* evento) override;
};

// Qt's own words (file dialog, standard buttons) in Spanish, from the
// translations installed with Qt; true when they were found.
bool Carga_Traducciones();

// Runs an action; a failure shows the run-time report and ends the program
// with status 1 (every event of the program runs through here).
bool Atiende_Fallo(const std::function<bool()>& accion);

// Makes every screen of the program known to the main window's menu.
void Registra_Pantallas(MDIForm1& principal);

// The start of a run: LOGIN, then, with the embedded server, the day's copy
// of the database.
void Arrancar(MDIForm1& principal, const Despliegue& despliegue, const QDate& hoy);

// The day's copy of the embedded database (folder and count from the
// settings). A copy that cannot be made is told once, and the work goes on.
void Copia_Del_Dia(const Despliegue& despliegue, const QDate& hoy);

// Ends the program the ordinary way (the database closed) on SIGTERM, SIGHUP
// or SIGINT, as a logout or a shutdown sends them.
void Termina_Con_Senales(QObject* dueno);

// Brings up the main window with LOGIN and runs until the program ends.
int Ejecutar_Programa(Aplicacion& app, const Despliegue& despliegue);
