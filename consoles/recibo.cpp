#include "recibo.h"
#include "permisos.h"
#include "fallo.h"
#include "formato.h"
#include "mensajes.h"
#include "module1.h"

#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QRegularExpression>

const QString Recibo::ImpresoraIntegrada = QStringLiteral("Impresora PDF");

namespace {

// The page: a letter sheet with the margins of a desk printer.
void prepararPagina(QPagedPaintDevice& hoja)
{
    hoja.setPageLayout(
        QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF(15, 12, 15, 12), QPageLayout::Millimeter));
}

// The lines of the receipt, each printed under the last one from the top of the
// page; a font change stays in force until the next one.
class Renglones {
public:
    explicit Renglones(QPainter& p) : p_(p)
    {
        fuente_.setFamily(QStringLiteral("DejaVu Sans"));
        fuente_.setItalic(false);
    }

    Renglones& tamano(double puntos)
    {
        fuente_.setPointSizeF(puntos);
        return *this;
    }
    Renglones& negrita(bool si)
    {
        fuente_.setBold(si);
        return *this;
    }
    Renglones& cursiva(bool si)
    {
        fuente_.setItalic(si);
        return *this;
    }
    Renglones& subrayado(bool si)
    {
        fuente_.setUnderline(si);
        return *this;
    }

    // A line of text; an empty text only moves down one line.
    void linea(const QString& texto = {}, int columna = 1)
    {
        p_.setFont(fuente_);
        const QFontMetricsF medidas(fuente_, p_.device());
        // A tab column counts in average characters of the font, from 1.
        const double x = (columna - 1) * medidas.averageCharWidth();
        if (!texto.isEmpty())
            p_.drawText(QPointF(x, y_ + medidas.ascent()), texto);
        y_ += medidas.lineSpacing();
    }

private:
    QPainter& p_;
    QFont fuente_;
    double y_ = 0;
};

} // namespace

Recibo::Recibo(Module1& m) : m(m) {}

QString Recibo::carpeta() const { return QDir(m.despliegue.carpetaRecibos).absolutePath() + QLatin1Char('/'); }

bool Recibo::Impresora_Es(const QString& patron)
{
    Impresora = m.despliegue.impresora.isEmpty() ? ImpresoraIntegrada : m.despliegue.impresora;
    const QRegularExpression comodin(QRegularExpression::wildcardToRegularExpression(patron));
    if (comodin.match(Impresora).hasMatch())
        return true;
    const QString tipo = patron.contains(QLatin1String("XPS")) ? QStringLiteral("XPS") : QStringLiteral("PDF");
    Mensajes::MsgBox(QStringLiteral("Atencion : Impresora prederminada no es ") + tipo, Mensajes::vbInformation);
    return false;
}

QString Recibo::Numero() const { return m.Rec_Fecha.mid(2, 6) + Format(double(m.Rec_Secuencia), QStringLiteral("000")); }

void Recibo::EMITIR_RECIBO()
{
    Recibo_Nombre = Numero() + QStringLiteral("  ") + m.Nom_Cliente;
    m.Rec_Concepto = m.Nombre_Concepto(Cod_Concepto);

    const QString origenPdf = carpeta() + (m.Nivel ? QStringLiteral("TRUMIN.pdf") : QStringLiteral("Trabajo de Impresion.pdf"));
    if (Impresora.isEmpty() || Impresora == ImpresoraIntegrada) {
        // The program's own printer leaves the job where a virtual printer would.
        Permisos::Crear_Carpeta(carpeta());
        Permisos::Crear_Archivo(origenPdf); // the receipt names a client: for this account only
        QPdfWriter hoja(origenPdf);
        hoja.setCreator(Mensajes::TituloPrograma);
        hoja.setTitle(QStringLiteral("Recibo de Cobro ") + Numero());
        prepararPagina(hoja);
        QPainter p(&hoja);
        DIBUJAR_RECIBO(p);
    } else {
        QPrinter hoja(QPrinter::HighResolution);
        hoja.setPrinterName(Impresora);
        hoja.setDocName(QStringLiteral("Recibo de Cobro ") + Numero());
        prepararPagina(hoja);
        QPainter p(&hoja);
        DIBUJAR_RECIBO(p);
    }

    if (Es_PDF) {
        Recibo_Origen = origenPdf;
        Recibo_Destino = carpeta() + Recibo_Nombre + QStringLiteral(".pdf");
    } else {
        Recibo_Origen = carpeta() + QStringLiteral("TRUMIN.xps");
        Recibo_Destino = carpeta() + Recibo_Nombre + QStringLiteral(".xps");
    }
}

void Recibo::DIBUJAR_RECIBO(QPainter& p)
{
    Renglones r(p);
    if (m.Rec_Operadora == 1) {
        r.tamano(18).negrita(true).subrayado(false).linea(QStringLiteral(" KESTRA LM, C.A."));
        r.linea();
        r.tamano(14).linea(QStringLiteral(" Ramil Ostaven   +580000000001"));
    } else if (m.Rec_Operadora == 2) {
        r.tamano(18).negrita(true).subrayado(false).linea(QLatin1Char(' ') + m.despliegue.web);
        r.tamano(7.5).cursiva(true).linea(QStringLiteral("    VELDAR ASESORES SERVICIOS ESPECIALES"));
        r.cursiva(false).linea();
        r.tamano(14).linea(QStringLiteral(" Noelina Varkos Ibáñez   +580000000002"));
    }
    r.tamano(10).linea(QStringLiteral(" Av. K-9"));
    r.linea(QStringLiteral(" RES PELTRANO TORRE B APTO # 101"));
    r.linea(QStringLiteral(" ARDENTA 0000, SOLVANIA"));
    r.linea(QStringLiteral(" VENEZUELA"));
    r.tamano(16).subrayado(true).linea(QStringLiteral("Recibo de Cobro"), 15);
    r.subrayado(false).linea();
    r.tamano(10).negrita(false).linea(QStringLiteral("  NUM. RECIBO...........") + Numero());
    r.linea();
    r.linea(QStringLiteral("  FECHA EMISIÓN.......") + Module1::Fecha_DMA(m.Rec_Fecha));
    r.linea();
    r.linea(QStringLiteral("  CLIENTE....................") + m.Nom_Cliente);
    r.linea();
    r.linea(QStringLiteral("  CONCEPTO...............") + m.Rec_Concepto);
    r.linea();
    r.linea(QStringLiteral("  MONTO TOTAL..........") + Rec_Monto + QStringLiteral(" ($ USD)"));
    r.linea();
    r.linea(QLatin1Char(' ') + QString(93, QLatin1Char('-')) + QString(84, QLatin1Char('-')));
}

void Recibo::COPIAR()
{
    if (Recibo_Origen.isEmpty() || !QFile::exists(Recibo_Origen))
        throw FalloEjecucion(53);
    QFile::remove(Recibo_Destino);
    if (!QFile::copy(Recibo_Origen, Recibo_Destino))
        throw FalloEjecucion(75);
}
