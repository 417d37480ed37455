// The export as the grid's menu runs it: the dialog, the remembered folder,
// the failure told.
#include "exportar.h"
#include "mensajes.h"
#include "pantalla.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

namespace Exportar {

namespace {

const QString kFiltroLibro = QStringLiteral("Libro de Excel (*.xlsx)");
const QString kFiltroTexto = QStringLiteral("Texto separado por punto y coma (*.csv)");
const QString kClaveCarpeta = QStringLiteral("exportar/carpeta");

QString dialogoDeQt(QWidget* padre, const QString& propuesto)
{
    QFileDialog d(padre, QStringLiteral("Exportar a hoja de cálculo"));
    // Qt's own dialog, which speaks Spanish with the program's translations.
    d.setOption(QFileDialog::DontUseNativeDialog);
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setFileMode(QFileDialog::AnyFile);
    d.setNameFilters({kFiltroLibro, kFiltroTexto});
    d.setDefaultSuffix(QStringLiteral("xlsx"));
    d.selectFile(propuesto);
    // The name typed follows the format chosen.
    QObject::connect(&d, &QFileDialog::filterSelected, &d, [&d](const QString& filtro) {
        const QString extension = filtro == kFiltroTexto ? QStringLiteral("csv") : QStringLiteral("xlsx");
        d.setDefaultSuffix(extension);
        const QFileInfo elegido(d.selectedFiles().value(0));
        const QString sufijo = elegido.suffix().toLower();
        if (sufijo == QLatin1String("csv") || sufijo == QLatin1String("xlsx"))
            d.selectFile(elegido.completeBaseName() + QLatin1Char('.') + extension);
    });
    if (d.exec() != QDialog::Accepted)
        return {};
    return d.selectedFiles().value(0);
}

Dialogo& dialogo()
{
    static Dialogo d;
    return d;
}

QSettings ajustes()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("ControlDePagos"),
                     QStringLiteral("control-pagos"));
}

struct RelojDeArena {
    RelojDeArena() { Pantalla::Reloj_De_Arena(true); }
    ~RelojDeArena() { Pantalla::Reloj_De_Arena(false); }
};

} // namespace

void Reemplazar(Dialogo d) { dialogo() = std::move(d); }

bool Exportar_Rejilla(const Rejilla& rejilla)
{
    QSettings s = ajustes();
    QString carpeta = s.value(kClaveCarpeta).toString();
    if (carpeta.isEmpty() || !QDir(carpeta).exists())
        carpeta = QDir::homePath();
    const QString propuesto = QDir(carpeta).filePath(rejilla.nombreArchivo() + QStringLiteral(".xlsx"));
    QWidget* padre = rejilla.window();
    const QString archivo = dialogo() ? dialogo()(padre, propuesto) : dialogoDeQt(padre, propuesto);
    if (archivo.isEmpty())
        return false;

    std::vector<HojaExportada> hojas = rejilla.hojas();
    if (hojas.empty())
        hojas.push_back({rejilla.nombreArchivo(), &rejilla});
    QString razon;
    {
        RelojDeArena reloj;
        if (archivo.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
            razon = Texto_Separado(hojas.front().rejilla ? *hojas.front().rejilla : rejilla, archivo);
        else
            razon = Libro(hojas, archivo);
    }
    if (!razon.isEmpty()) {
        Mensajes::MsgBox(QStringLiteral("No se pudo guardar el archivo \"%1\": %2.").arg(QFileInfo(archivo).fileName(), razon),
                         Mensajes::vbExclamation);
        return false;
    }
    s.setValue(kClaveCarpeta, QFileInfo(archivo).absolutePath());
    return true;
}

} // namespace Exportar
