#pragma once
// Searches of the business ignore capitals and accents: "pena" and "peña"
// find "PEÑA", "jose" finds "JOSÉ". The embedded server folds both sides of a
// search with the engine function pliega(texto); SQL Server compares them in
// an accent- and case-insensitive collation, which gives the same rows.
#include <QString>

struct sqlite3;

// The text in capitals with its accents, dieresis and tilde taken off
// ("Peña Güiria" -> "PENA GUIRIA").
QString Pliega(const QString& texto);

// Makes pliega(texto) known to the connection; NULL stays NULL. Returns the
// engine's result code.
int Registra_Pliega(sqlite3* bd);
