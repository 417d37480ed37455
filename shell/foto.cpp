#include "foto.h"
#include "fallo.h"
#include "module1.h"

#include <QLabel>
#include <QPixmap>

namespace Foto {

namespace {
QByteArray leeFila(Module1& m, const QString& sql)
{
    m.Cierra_Rs();
    m.SQL = sql;
    m.Abre_Rs(m.SQL);
    return m.Rs->RecordCount() == 0 ? QByteArray() : m.Rs->Fields(QStringLiteral("img")).aBytes();
}
} // namespace

QByteArray Lee(Module1& m, const QString& codigo, bool enRevision, bool* sinFoto)
{
    if (sinFoto)
        *sinFoto = false;
    QByteArray bytes;
    if (enRevision) {
        bytes = leeFila(m, QStringLiteral("select  * from fotos where cliente = 9999"));
    } else {
        m.Cierra_Rs();
        m.SQL = QStringLiteral("select top 1 * from fotos where cliente = '") + codigo + QStringLiteral("'");
        m.Abre_Rs(m.SQL);
        if (m.Rs->RecordCount() == 0) {
            if (sinFoto)
                *sinFoto = true;
            bytes = leeFila(m, QStringLiteral("select  * from fotos where cliente = 0"));
        } else {
            bytes = m.Rs->Fields(QStringLiteral("img")).aBytes();
        }
    }
    // Rows 0 and 9999 are part of every database: a missing one is a failure.
    if (m.Rs->RecordCount() == 0)
        throw FalloEjecucion::finDeDatos();
    m.Cierra_Rs();
    return bytes;
}

void Muestra(QLabel* imagen, const QByteArray& bytes)
{
    QPixmap foto;
    if (!foto.loadFromData(bytes))
        throw FalloEjecucion(481);
    imagen->setPixmap(foto.scaled(imagen->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

} // namespace Foto
