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

QByteArray procedimiento(const QString& nombre)
{
    return conFragmentos(leer(QStringLiteral("procedimientos/%1.sql").arg(nombre)),
                         [](const QString& fragmento) { return leer(QStringLiteral("procedimientos/fragmentos/") + fragmento); });
}

QByteArray conFragmentos(const QByteArray& texto, const std::function<QByteArray(const QString&)>& fragmento)
{
    static const QByteArray kIncluye = "--@incluye";
    QList<QByteArray> lineas = texto.split('\n');
    for (QByteArray& linea : lineas) {
        const QByteArray l = linea.trimmed();
        if (!l.startsWith(kIncluye))
            continue;
        const QString nombre = QString::fromUtf8(l.mid(kIncluye.size()).trimmed());
        if (nombre.isEmpty())
            throw std::runtime_error("an include line without a fragment");
        QByteArray incluido = fragmento(nombre);
        if (incluido.contains(kIncluye))
            throw std::runtime_error("the fragment " + nombre.toStdString() + " includes another");
        if (incluido.endsWith('\n'))
            incluido.chop(1);
        linea = incluido;
    }
    return lineas.join('\n');
}

} // namespace RecursosBd
