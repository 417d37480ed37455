#include "embebido.h"
#include "fallo.h"
#include "sqlserver.h"

#include <QHash>

namespace {

// "Clave=valor;Clave=valor" with keys in any capitals.
QHash<QString, QString> partes(const QString& cadena)
{
    QHash<QString, QString> r;
    for (const QString& trozo : cadena.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const auto igual = trozo.indexOf(QLatin1Char('='));
        if (igual < 0)
            continue;
        r.insert(trozo.left(igual).trimmed().toLower(), trozo.mid(igual + 1).trimmed());
    }
    return r;
}

} // namespace

std::unique_ptr<Servidor> crearServidor(const QString& cadenaConexion)
{
    const auto p = partes(cadenaConexion);
    const QString proveedor = p.value(QStringLiteral("provider")).toLower();
    if (proveedor == QLatin1String("embebido"))
        return std::make_unique<ServidorEmbebido>(p.value(QStringLiteral("data source")));
    if (proveedor == QLatin1String("sqlserver")) {
        DatosSqlServer d;
        const QStringList servidor = p.value(QStringLiteral("server")).split(QLatin1Char(','));
        d.servidor = servidor.value(0).trimmed();
        if (servidor.size() > 1)
            d.puerto = servidor[1].trimmed().toInt();
        if (p.contains(QStringLiteral("database")))
            d.base = p.value(QStringLiteral("database"));
        if (p.contains(QStringLiteral("user")))
            d.usuario = p.value(QStringLiteral("user"));
        d.clave = p.value(QStringLiteral("password"));
        if (p.contains(QStringLiteral("timeout")))
            d.segundosConexion = p.value(QStringLiteral("timeout")).toInt();
        return std::make_unique<ServidorSqlServer>(d);
    }
    throw FalloEjecucion::conexion(QStringLiteral("Provider cannot be found. It may not be properly installed. (%1)").arg(proveedor));
}
