#include "informe.h"
#include "calculos01.h"
#include "despliegue.h"
#include "grafico.h"

#include <QAbstractItemModel>
#include <QAbstractTextDocumentLayout>
#include <QDateTime>
#include <QFontMetricsF>
#include <QLineEdit>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

namespace {

Informe::Vista vistaReemplazada;

// A grid as a table: its captions as the heading row (repeated on each page
// the table reaches), its rows as shown, and its footers as the totals line.
void tabla(QTextCursor& cursor, const QString& nombre, Rejilla* g, int ancho)
{
    QTextCharFormat negrita;
    negrita.setFontWeight(QFont::Bold);
    QTextBlockFormat separado;
    separado.setTopMargin(10);
    separado.setBottomMargin(4);
    cursor.insertBlock(separado);
    QTextCharFormat encabezado = negrita;
    encabezado.setFontPointSize(11);
    cursor.insertText(nombre, encabezado);

    const std::vector<int> cols = g->columnasVistas();
    const QAbstractItemModel* modelo = g->modelo();
    const int filas = modelo->rowCount();
    bool conPies = false;
    for (int c : cols)
        conPies = conPies || !g->Columns(c).FooterText().isEmpty();

    QTextTableFormat formato;
    formato.setHeaderRowCount(1);
    formato.setWidth(QTextLength(QTextLength::PercentageLength, ancho));
    formato.setCellPadding(1);
    formato.setCellSpacing(0);
    formato.setBorder(0);
    QTextTable* t = cursor.insertTable(filas + 1 + (conPies ? 1 : 0), int(cols.size()), formato);
    QTextCharFormat cabeza = negrita;
    cabeza.setBackground(QColor(0xe4, 0xe8, 0xee));
    auto escribe = [&](int fila, int k, const QString& texto, const QTextCharFormat& f) {
        QTextTableCell celda = t->cellAt(fila, k);
        celda.setFormat(f);
        QTextCursor c = celda.firstCursorPosition();
        QTextBlockFormat alineado;
        const Alineacion a = g->Columns(cols[size_t(k)]).Alignment();
        alineado.setAlignment(a == Alineacion::Derecha  ? Qt::AlignRight
                              : a == Alineacion::Centro ? Qt::AlignHCenter
                                                        : Qt::AlignLeft);
        c.setBlockFormat(alineado);
        c.insertText(texto, f);
    };
    for (int k = 0; k < int(cols.size()); ++k)
        escribe(0, k, g->tituloEnUnaLinea(cols[size_t(k)]), cabeza);
    // Every other row shaded, for the eye to follow a line across.
    QTextCharFormat sombra;
    sombra.setBackground(QColor(0xf2, 0xf4, 0xf7));
    for (int f = 0; f < filas; ++f)
        for (int k = 0; k < int(cols.size()); ++k)
            escribe(f + 1, k, modelo->index(f, cols[size_t(k)]).data().toString(), f % 2 ? sombra : QTextCharFormat());
    if (conPies)
        for (int k = 0; k < int(cols.size()); ++k)
            escribe(filas + 1, k, g->Columns(cols[size_t(k)]).FooterText(), cabeza);
    cursor.movePosition(QTextCursor::End);
}

} // namespace

namespace Informe {

QString Titulo(const Despliegue& d)
{
    if (!d.tituloInforme.trimmed().isEmpty())
        return d.tituloInforme.trimmed();
    if (!d.web.trimmed().isEmpty())
        return d.web.trimmed();
    return QStringLiteral("Control de Pagos");
}

std::unique_ptr<QTextDocument> Documento(const CALCULOS01& p, const QString& tituloNegocio)
{
    auto doc = std::make_unique<QTextDocument>();
    doc->setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 8));
    doc->setMetaInformation(QTextDocument::DocumentTitle, tituloNegocio);
    QTextCursor cursor(doc.get());

    QTextBlockFormat centrado;
    centrado.setAlignment(Qt::AlignHCenter);
    QTextCharFormat grande;
    grande.setFontPointSize(16);
    grande.setFontWeight(QFont::Bold);
    QTextCharFormat mediano;
    mediano.setFontPointSize(12);
    mediano.setFontWeight(QFont::Bold);
    cursor.setBlockFormat(centrado);
    cursor.insertText(tituloNegocio, grande);
    cursor.insertBlock(centrado);
    cursor.insertText(QStringLiteral("Estadísticas ") + (p.Es_Usdt() ? QStringLiteral("USDT ") : QString()) +
                          (p.Por_Meses() ? QStringLiteral("mes por mes") : QStringLiteral("día por día")) +
                          QStringLiteral(" — ") + p.Periodo(),
                      mediano);
    cursor.insertBlock(centrado);
    cursor.insertText(p.Filtros(), QTextCharFormat());
    if (!p.Por_Meses() && !p.Text1[CALCULOS01::txtPromedio]->text().isEmpty()) {
        cursor.insertBlock(centrado);
        cursor.insertText(QStringLiteral("Promedio diario: ") + p.Text1[CALCULOS01::txtPromedio]->text() +
                          QStringLiteral(" — Balance: ") + p.Text1[CALCULOS01::txtBalance]->text());
    }
    cursor.insertBlock(centrado);
    cursor.insertText(QStringLiteral("Emitido el ") + QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy hh:mm")));

    // The chart of the period, nearly as wide as the text.
    const QImage grafico = imagenDe(graficoPorDia(datosDe(p)), QSize(860, 460));
    doc->addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("grafico:dias")), grafico);
    cursor.insertBlock(centrado);
    QTextImageFormat imagen;
    imagen.setName(QStringLiteral("grafico:dias"));
    imagen.setWidth(620);
    imagen.setHeight(620.0 * grafico.height() / std::max(1, grafico.width()));
    cursor.insertImage(imagen);

    tabla(cursor, p.Por_Meses() ? QStringLiteral("Mes por mes") : QStringLiteral("Día por día"), p.GRID, 75);
    tabla(cursor, QStringLiteral("Proveedores"), p.GRID1, 70);
    tabla(cursor, QStringLiteral("Clientes"), p.GRID2, 90);
    tabla(cursor, QStringLiteral("Bancos"), p.GRID4, 70);
    tabla(cursor, QStringLiteral("Servicios"), p.GRID5, 70);
    return doc;
}

int Imprimir(const QTextDocument& original, QPrinter& impresora)
{
    // Laid out anew for the printer's page, less a strip at the foot for
    // the page's number.
    std::unique_ptr<QTextDocument> doc(original.clone());
    doc->documentLayout()->setPaintDevice(&impresora);
    const QRectF pagina = impresora.pageRect(QPrinter::DevicePixel);
    const QFont letraPie(QStringLiteral("DejaVu Sans"), 7);
    const double altoPie = 2 * QFontMetricsF(letraPie, &impresora).height();
    const QSizeF cuerpo(pagina.width(), pagina.height() - altoPie);
    doc->setPageSize(cuerpo);
    const int paginas = doc->pageCount();

    QPainter pintor;
    if (!pintor.begin(&impresora))
        return 0;
    for (int i = 0; i < paginas; ++i) {
        if (i > 0)
            impresora.newPage();
        pintor.save();
        pintor.translate(0, -i * cuerpo.height());
        doc->drawContents(&pintor, QRectF(QPointF(0, i * cuerpo.height()), cuerpo));
        pintor.restore();
        pintor.setFont(letraPie);
        pintor.drawText(QRectF(0, cuerpo.height(), cuerpo.width(), altoPie), Qt::AlignRight | Qt::AlignBottom,
                        QStringLiteral("Página %1 de %2").arg(i + 1).arg(paginas));
    }
    pintor.end();
    return paginas;
}

void Mostrar(CALCULOS01& p, const QString& titulo)
{
    const std::unique_ptr<QTextDocument> doc = Documento(p, titulo);
    if (vistaReemplazada) {
        vistaReemplazada(*doc);
        return;
    }
    QPrinter impresora(QPrinter::HighResolution);
    impresora.setPageSize(QPageSize(QPageSize::A4));
    impresora.setPageMargins(QMarginsF(15, 15, 15, 12), QPageLayout::Millimeter);
    impresora.setDocName(QStringLiteral("estadisticas-") + (p.Es_Usdt() ? QStringLiteral("usdt-") : QString()) +
                         p.Periodo_Archivo());
    QPrintPreviewDialog vista(&impresora, &p);
    vista.setWindowTitle(QStringLiteral("Vista previa del informe"));
    QObject::connect(&vista, &QPrintPreviewDialog::paintRequested, &vista,
                     [&doc](QPrinter* destino) { Imprimir(*doc, *destino); });
    vista.resize(1000, 800);
    vista.exec();
}

void Reemplazar(Vista vista) { vistaReemplazada = std::move(vista); }

} // namespace Informe
