#pragma once
// Daily copies of the embedded database. With the embedded server the
// business's whole books are one file on one disk: once a day, at start-up,
// a consistent copy is written beside it with SQLite's online backup (other
// client processes may be writing meanwhile), checked, and only then are the
// oldest copies beyond the count removed.
#include <QDate>
#include <QString>
#include <QStringList>

namespace Copias {

struct Resultado {
    enum class Estado {
        Hecha,   // a new sound copy was written
        AlDia,   // a sound copy of this day stood already
        Apagada, // the count is 0: copies are switched off
        Fallida, // no copy could be made; error says why
    };
    Estado estado = Estado::Fallida;
    QString archivo; // the day's copy (made or found)
    QString error;   // in Spanish, for the operator
};

// The copy of the database file 'base' for the day 'hoy' in 'carpeta'
// (created when missing; empty: the folder 'copias' beside the database), keeping the newest 'cuantas' copies. Never throws.
Resultado Copia_Diaria(const QString& base, const QString& carpeta, int cuantas, const QDate& hoy);

// A sound copy of the database taken before a change of its schema, kept
// beside the daily copies under its own name (ramil-2026-11-24-<motivo>.db),
// never removed by the count. The message of a failure is the daily copy's.
Resultado Copia_Previa(const QString& base, const QString& carpeta, const QString& motivo, const QDate& hoy);

// The folder of the copies: the one given, or 'copias' beside the database.
QString Carpeta_De_Copias(const QString& base, const QString& carpeta);

// The newest daily copy that passes the quick check; empty when none does.
QString Copia_Sana_Mas_Reciente(const QString& base, const QString& carpeta);

// The name of the day's copy of a database file: ramil.db -> ramil-2026-11-23.db.
QString Nombre_Copia(const QString& base, const QDate& dia);

// The copies of a database file that stand in a folder, oldest first.
QStringList Copias_En(const QString& base, const QString& carpeta);

// Whether a file is a sound database of the program (the start-up's check).
// The quick form skips the indexes' cross-check.
bool Base_Sana(const QString& archivo, bool rapida = false);

} // namespace Copias
