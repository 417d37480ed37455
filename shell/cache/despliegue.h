#pragma once
// The fixed values of a deployment: where the server is and how to reach it,
// where receipts go and which printer makes them. Read from the settings file
// at start-up; without one, the embedded server and the built-in PDF printer.
#include <QString>

struct Despliegue {
    enum class Tipo { Embebido, SqlServer };
    Tipo tipo = Tipo::Embebido;
    QString archivo;                // embedded server: the database file
    bool archivoPorDefecto = false; // the file is the new installation's default, not one the settings name
    QString archivoAjustes;         // the settings file read (may hold the SQL Server password)
    QString archivoAvisos;          // where the start-up keeps the warnings on rights already given; empty: none kept
    QString servidor;               // SQL Server: host name or address
    int puerto = 1433;
    QString clave;            // SQL Server: the password of the user TRUMIN
    QString carpetaRecibos;   // folder of the receipt files
    QString impresora;        // receipt printer; empty: the built-in PDF printer
    QString web;              // web address printed in the second receipt head
    QString tituloInforme;    // the business's name atop the printed reports; empty: the web address
    QString carpetaCopias;    // embedded server: folder of the daily copies; empty: 'copias' beside the file
    int copiasGuardadas = 30; // embedded server: how many daily copies are kept; 0 makes none
};
