#include "mensajes.h"
#include "fallo.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace Mensajes {

const QString TituloPrograma = QStringLiteral("Control de Pagos");

namespace {
Manejador& manejador()
{
    static Manejador m;
    return m;
}
} // namespace

void Reemplazar(Manejador m) { manejador() = std::move(m); }

int MsgBox(const QString& texto, int estilo, const QString& titulo)
{
    if (manejador())
        return manejador()(texto, estilo, titulo);

    QMessageBox caja(QApplication::activeWindow());
    caja.setWindowTitle(titulo);
    caja.setText(texto);
    switch (estilo & 0x70) {
    case vbCritical:
        caja.setIcon(QMessageBox::Critical);
        break;
    case vbQuestion:
        caja.setIcon(QMessageBox::Question);
        break;
    case vbExclamation:
        caja.setIcon(QMessageBox::Warning);
        break;
    case vbInformation:
        caja.setIcon(QMessageBox::Information);
        break;
    default:
        caja.setIcon(QMessageBox::NoIcon);
        break;
    }
    if ((estilo & 0x7) == vbYesNo) {
        caja.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        caja.button(QMessageBox::Yes)->setText(QStringLiteral("&Sí"));
        caja.button(QMessageBox::No)->setText(QStringLiteral("&No"));
        // 256 makes the second button the default one
        caja.setDefaultButton((estilo & 0x300) == 256 ? QMessageBox::No : QMessageBox::Yes);
        return caja.exec() == QMessageBox::Yes ? vbYes : vbNo;
    }
    caja.setStandardButtons(QMessageBox::Ok);
    caja.button(QMessageBox::Ok)->setText(QStringLiteral("Aceptar"));
    caja.exec();
    return vbOK;
}

void Reporte_Fallo(const FalloEjecucion& fallo)
{
    MsgBox(QStringLiteral("Se ha producido el error '%1' en tiempo de ejecución:\n\n%2").arg(fallo.numero()).arg(fallo.texto()),
           vbCritical);
}

} // namespace Mensajes
