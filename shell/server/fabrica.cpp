#include "embebido.h"
#include "fallo.h"
#include "sqlserver.h"

#include <QHash>

namespace {

// "Clave=valor;Clave=valor" with keys in any capitals. A value in braces
// ("Password={a;b}") is taken as it stands up to the "}" that ends the text or
// stands before a ";", so that it may hold ";", "=", braces and blanks.
QHash<QString, QString> partes(const QString& cadena)
{
    QHash<QString, QString> r;
    qsizetype i = 0;
    const qsizetype n = cadena.size();
    while (i < n) {
        const qsizetype igual = cadena.indexOf(QLatin1Char('='), i);
        const qsizetype puntoYComa = cadena.indexOf(QLatin1Char(';'), i);
        if (igual < 0 || (puntoYComa >= 0 && puntoYComa < igual)) { // a piece without "="
            if (puntoYComa < 0)
                break;
            i = puntoYComa + 1;
            continue;
        }
        const QString clave = cadena.mid(i, igual - i).trimmed().toLower();
        qsizetype inicio = igual + 1;
        while (inicio < n && cadena[inicio] == QLatin1Char(' '))
            ++inicio;
        QString valor;
        qsizetype fin = -1;
        if (inicio < n && cadena[inicio] == QLatin1Char('{')) {
            for (qsizetype k = inicio + 1; k < n; ++k) {
                if (cadena[k] == QLatin1Char('}') && (k + 1 == n || cadena[k + 1] == QLatin1Char(';'))) {
                    valor = cadena.mid(inicio + 1, k - inicio - 1);
                    fin = k + 1;
                    break;
                }
            }
        }
        if (fin < 0) {
            fin = cadena.indexOf(QLatin1Char(';'), igual + 1);
            if (fin < 0)
                fin = n;
            valor = cadena.mid(igual + 1, fin - igual - 1).trimmed();
        }
        r.insert(clave, valor);
        i = fin + 1;
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
    throw FalloEjecucion::conexion(
        QStringLiteral("No se puede encontrar el proveedor. Es posible que no esté instalado correctamente. (%1)")
            .arg(proveedor));
}
