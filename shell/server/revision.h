#pragma once
// The embedded database file as the books of the office: whether it is sound,
// which version of the schema it carries, and its upgrade to the schema of
// this program. The schema's version is the file's user_version; a database
// made before versions were kept carries 0.
#include <QString>

struct sqlite3;

namespace Revision {

// The schema version this program makes and works with (the last line of
// the schema script says it).
int Version_Programa();

// The version a database file carries; -1 when the file cannot be read.
int Version_De(const QString& archivo);

// Brings a database of an older version to the schema of this program, in
// one transaction: tables that differ from today's are made anew the way the
// engine documents it (new table, every row copied, old table dropped),
// missing tables, indexes and triggers are made, stale ones dropped, and the
// version is written last. A failure leaves the file as it was and throws
// FalloEjecucion with the engine's reason. A file already current is left alone.
void Actualizar(const QString& archivo);

// What is wrong with a database file as the books: empty when it is a sound
// database of this program. The quick form skips the indexes' cross-check
// (what the start-up can afford on a large file).
QString Danos(const QString& archivo, bool rapida = true);

// True when the open database is no longer the file at its path: the file was
// deleted, moved away, or another file was put in its place.
bool Archivo_Movido(sqlite3* bd);

} // namespace Revision
