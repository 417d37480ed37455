#pragma once
// The files of the database folder, as compiled into the program.
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace RecursosBd {
// Contents of a file of the folder, by its path inside it ("esquema.sql",
// "procedimientos/TRU_PARAMETROS.sql"); a missing file is a failure.
QByteArray leer(const QString& ruta);
// The names of the procedure files, without ".sql".
QStringList procedimientos();
} // namespace RecursosBd
