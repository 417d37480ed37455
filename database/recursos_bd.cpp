#include "recursos_bd.h"

#include <QDir>
#include <QFile>
#include <stdexcept>

namespace RecursosBd {

QByteArray leer(const QString& ruta)
{
    QFile f(QStringLiteral(":/database/") + ruta);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error("missing database resource: " + ruta.toStdString());
    return f.readAll();
}

QStringList procedimientos()
{
    QStringList r;
    for (const QString& nombre : QDir(QStringLiteral(":/database/procedimientos")).entryList({QStringLiteral("*.sql")}))
        r << nombre.chopped(4);
    return r;
}

} // namespace RecursosBd
