#include "foto.h"
#include "fallo.h"
#include "module1.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QStandardPaths>

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

QByteArray Para_Grabar(const QByteArray& archivo)
{
    QBuffer entrada;
    entrada.setData(archivo);
    entrada.open(QIODevice::ReadOnly);
    QImageReader lector(&entrada);
    lector.setAutoTransform(true);
    QImage foto = lector.read();
    if (foto.isNull())
        throw FalloEjecucion(481);
    if (foto.width() > Lado_Maximo || foto.height() > Lado_Maximo)
        foto = foto.scaled(Lado_Maximo, Lado_Maximo, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (foto.hasAlphaChannel()) {
        // A JPEG has no transparency: what showed through turns white, not black.
        QImage fondo(foto.size(), QImage::Format_RGB32);
        fondo.fill(Qt::white);
        QPainter(&fondo).drawImage(0, 0, foto);
        foto = fondo;
    }
    QByteArray bytes;
    QBuffer salida(&bytes);
    salida.open(QIODevice::WriteOnly);
    foto.save(&salida, "JPEG", 85); // no mark of compression to be seen at that size
    return bytes;
}

QString Carpeta_De_Fotos()
{
    const QString fotos = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return !fotos.isEmpty() && QFileInfo(fotos).isDir() ? fotos : QDir::homePath();
}

} // namespace Foto
