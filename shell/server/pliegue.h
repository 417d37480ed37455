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

// The order of names on SQL Server's Modern_Spanish_CI_AS: capitals ignored,
// accents only between names otherwise equal, and Ñ a letter of its own
// between N and O ("PEÑA" after "PENZO", before "PEREZ"). Negative, zero or
// positive as a comes before, with or after b.
int Compara_Espanol(const QString& a, const QString& b);

// Makes the collation ESPANOL (Compara_Espanol) known to the connection, for
// the lists that come by name. Returns the engine's result code.
int Registra_Espanol(sqlite3* bd);
