#pragma once
// The files of the database folder, as compiled into the program.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

namespace RecursosBd {
// Contents of a file of the folder, by its path inside it ("esquema.sql",
// "procedimientos/TRU_PARAMETROS.sql"); a missing file is a failure.
QByteArray leer(const QString& ruta);
// The names of the procedure files, without ".sql".
QStringList procedimientos();
// The text of a procedure as the server runs it: its file, each line
// "--@incluye NAME.sql" replaced by the fragment of that name
// (procedimientos/fragmentos/NAME.sql), so that a filter that several
// procedures share is written once.
QByteArray procedimiento(const QString& nombre);
// The same with the fragments read by `fragmento` (given the NAME.sql of an
// include line). A fragment holds no include line of its own: it would stay
// a comment and leave its filter out, so it is a failure, as is an include
// line without a name.
QByteArray conFragmentos(const QByteArray& texto, const std::function<QByteArray(const QString&)>& fragmento);
} // namespace RecursosBd
