#include "grafico.h"
#include "calculos01.h"
#include "formato.h"
#include "mensajes.h"
#include "numeros.h"

#include <QAction>
#include <QApplication>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLegendMarker>
#include <QLineSeries>
#include <QPainter>
#include <QPdfWriter>
#include <QPieSeries>
#include <QPieSlice>
#include <QPushButton>
#include <QTabWidget>
#include <QValueAxis>
#include <QVBoxLayout>

#include <algorithm>

namespace {

using C = CALCULOS01;

// The number a cell shows, in the business's marks; an empty cell is 0.
double cifra(const Celdas& c, int f, int col)
{
    const QString t = c.Value(f, col).texto().trimmed();
    return Numeros::EsNumerico(t) ? Numeros::CDbl(t) : 0;
}
QString texto(const Celdas& c, int f, int col) { return c.Value(f, col).texto().trimmed(); }

// "2025-03" as "Mar", or "Mar 2025" when the months span two years.
QString mesCorto(const QString& clave, bool conAno)
{
    static const char* const meses[] = {"Ene", "Feb", "Mar", "Abr", "May", "Jun", "Jul", "Ago", "Sep", "Oct", "Nov", "Dic"};
    const int mes = clave.mid(5).toInt();
    if (mes < 1 || mes > 12)
        return clave;
    const QString nombre = QString::fromLatin1(meses[mes - 1]);
    return conAno ? nombre + QLatin1Char(' ') + clave.left(4) : nombre;
}

// A grid of codes, names and money as slices.
std::vector<PorcionGrafico> porciones(const Celdas& c)
{
    std::vector<PorcionGrafico> r;
    for (const int f : c.Filas()) {
        QString nombre = texto(c, f, C::grpNombre);
        if (nombre.isEmpty() || Numeros::EsNumerico(nombre)) // a code the books do not name
            nombre = texto(c, f, C::grpCodigo);
        r.push_back({nombre, cifra(c, f, C::grpRecibido)});
    }
    return r;
}

// The charts' numbers carry the business's marks: "1.234,50".
void enEspanol(QChart* g)
{
    g->setLocale(QLocale(QLocale::Spanish, QLocale::Venezuela));
    g->setLocalizeNumbers(true);
    g->setAnimationOptions(QChart::NoAnimation);
    QFont f = g->titleFont();
    f.setPointSizeF(f.pointSizeF() * 1.2);
    f.setBold(true);
    g->setTitleFont(f);
}

// An axis from 0 (or below, for a loss) to a round figure above the largest.
QValueAxis* ejeDeMontos(const QString& titulo, double menor, double mayor)
{
    auto* eje = new QValueAxis;
    eje->setTitleText(titulo);
    eje->setRange(std::min(0.0, menor), mayor > 0 ? mayor * 1.05 : 1);
    eje->applyNiceNumbers();
    eje->setLabelFormat(eje->max() - eje->min() < 10 ? QStringLiteral("%.2f") : QStringLiteral("%.0f"));
    return eje;
}

QString pideConDialogo(QWidget* padre, const QString& titulo, const QString& propuesto, const QString& filtros)
{
    return QFileDialog::getSaveFileName(padre, titulo, propuesto, filtros);
}
Grafico::PideArchivo pideArchivo = pideConDialogo;

} // namespace

DatosGrafico datosDe(const CALCULOS01& p)
{
    DatosGrafico d;
    d.porMeses = p.Por_Meses();
    d.titulo = (p.Es_Usdt() ? QStringLiteral("USDT — ") : QString()) + p.Periodo() + QStringLiteral(" — ") + p.Filtros();
    if (p.Es_Usdt())
        d.recibido = QStringLiteral("Enviado");

    // In the calendar's order, whatever order a click on a heading left.
    const Celdas& c = p.Celdas;
    std::vector<int> filas;
    for (const int f : c.Filas())
        filas.push_back(f);
    std::stable_sort(filas.begin(), filas.end(),
                     [&c](int a, int b) { return texto(c, a, C::colDia) < texto(c, b, C::colDia); });
    const bool variosAnos = !filas.empty() && texto(c, filas.front(), C::colDia).left(4) != texto(c, filas.back(), C::colDia).left(4);
    for (const int f : filas) {
        PuntoGrafico punto;
        const QString dia = texto(c, f, C::colDia);
        const QString semana = texto(c, f, C::colSemana);
        punto.etiqueta = d.porMeses ? mesCorto(dia, variosAnos) : semana + QLatin1Char(' ') + dia;
        punto.finDeSemana = !d.porMeses && (semana == QLatin1String("Sab") || semana == QLatin1String("Dom"));
        punto.recibido = cifra(c, f, C::colRecibido);
        punto.directos = cifra(c, f, C::colDirectos);
        punto.ganancia = cifra(c, f, C::colTotG);
        punto.conDatos = !texto(c, f, C::colRecibido).isEmpty() || !texto(c, f, C::colTotG).isEmpty();
        d.puntos.push_back(punto);
    }
    d.servicios = mayoresYOtros(porciones(p.Celdas5));
    d.proveedores = mayoresYOtros(porciones(p.Celdas1));
    return d;
}

std::vector<PorcionGrafico> mayoresYOtros(std::vector<PorcionGrafico> porciones, size_t cuantas)
{
    // A slice of nothing, or of less, has no place in a share.
    std::erase_if(porciones, [](const PorcionGrafico& p) { return p.monto <= 0; });
    std::stable_sort(porciones.begin(), porciones.end(), [](const auto& a, const auto& b) { return a.monto > b.monto; });
    if (porciones.size() <= cuantas + 1) // "Otros" of one slice would only hide its name
        return porciones;
    PorcionGrafico otros {QStringLiteral("Otros"), 0};
    for (size_t i = cuantas; i < porciones.size(); ++i)
        otros.monto += porciones[i].monto;
    porciones.resize(cuantas);
    porciones.push_back(otros);
    return porciones;
}

QChart* graficoPorDia(const DatosGrafico& d)
{
    auto* g = new QChart;
    enEspanol(g);
    g->setTitle((d.porMeses ? QStringLiteral("Mes por mes — ") : QStringLiteral("Día por día — ")) + d.titulo);

    auto* recibido = new QBarSet(d.recibido);
    auto* directos = new QBarSet(QStringLiteral("Directos"));
    auto* ganancia = new QLineSeries;
    ganancia->setName(QStringLiteral("Ganancia (Tot-G)"));
    // Saturdays and Sundays stand apart in lighter shades of the same colours.
    recibido->setColor(QColor(0x2e, 0x6d, 0xb4));
    recibido->setSelectedColor(QColor(0x9c, 0xbd, 0xe3));
    directos->setColor(QColor(0xe0, 0x8a, 0x1e));
    directos->setSelectedColor(QColor(0xf4, 0xc9, 0x8e));
    ganancia->setPen(QPen(QColor(0x2a, 0x9d, 0x3a), 2.5));
    ganancia->setPointsVisible(true);

    // The line ends on the last day with figures: the days still to come
    // have no gain yet, not a gain of nothing.
    size_t hasta = d.puntos.size();
    while (hasta > 0 && !d.puntos[hasta - 1].conDatos)
        --hasta;
    QStringList categorias;
    double menor = 0, mayor = 0, menorG = 0, mayorG = 0;
    for (size_t i = 0; i < d.puntos.size(); ++i) {
        const PuntoGrafico& p = d.puntos[i];
        *recibido << p.recibido;
        *directos << p.directos;
        if (i < hasta)
            ganancia->append(double(i), p.ganancia);
        categorias << p.etiqueta;
        if (p.finDeSemana) {
            recibido->selectBar(int(i));
            directos->selectBar(int(i));
        }
        menor = std::min({menor, p.recibido, p.directos});
        mayor = std::max({mayor, p.recibido, p.directos});
        menorG = std::min(menorG, p.ganancia);
        mayorG = std::max(mayorG, p.ganancia);
    }
    auto* barras = new QBarSeries;
    barras->append(recibido);
    barras->append(directos);
    g->addSeries(barras);
    g->addSeries(ganancia);

    auto* ejeX = new QBarCategoryAxis;
    ejeX->append(categorias);
    ejeX->setGridLineVisible(false);
    if (!d.porMeses) {
        ejeX->setLabelsAngle(-90);
        ejeX->setTitleText(QStringLiteral("Día (sábados y domingos en color claro)"));
    }
    g->addAxis(ejeX, Qt::AlignBottom);
    barras->attachAxis(ejeX);
    ganancia->attachAxis(ejeX);
    QValueAxis* ejeMonto = ejeDeMontos(d.recibido, menor, mayor);
    g->addAxis(ejeMonto, Qt::AlignLeft);
    barras->attachAxis(ejeMonto);
    QValueAxis* ejeGanancia = ejeDeMontos(QStringLiteral("Ganancia (Tot-G)"), menorG, mayorG);
    ejeGanancia->setLinePenColor(ganancia->pen().color());
    ejeGanancia->setLabelsColor(ganancia->pen().color());
    g->addAxis(ejeGanancia, Qt::AlignRight);
    ganancia->attachAxis(ejeGanancia);
    g->legend()->setAlignment(Qt::AlignBottom);
    return g;
}

QChart* graficoDeTorta(const std::vector<PorcionGrafico>& porciones, const QString& titulo)
{
    auto* g = new QChart;
    enEspanol(g);
    double total = 0;
    for (const PorcionGrafico& p : porciones)
        total += p.monto;
    g->setTitle(total > 0 ? titulo : titulo + QStringLiteral(" (sin movimientos)"));
    auto* torta = new QPieSeries;
    torta->setPieSize(0.62);
    QStringList leyendas;
    for (const PorcionGrafico& p : porciones) {
        const QString parte = Format(100 * p.monto / total, QStringLiteral("##0.0")) + QStringLiteral(" %");
        // On the pie the share of each slice wide enough to hold it; the
        // legend names them all, with their money.
        QPieSlice* s = torta->append(parte, p.monto);
        s->setLabelVisible(100 * p.monto / total >= 2);
        leyendas << p.nombre + QStringLiteral(": ") + Format(p.monto, QStringLiteral("###,##0")) + QStringLiteral(" (") + parte +
                        QLatin1Char(')');
    }
    g->addSeries(torta);
    const QList<QLegendMarker*> marcas = g->legend()->markers(torta);
    for (int i = 0; i < marcas.size(); ++i)
        marcas[i]->setLabel(leyendas[i]);
    g->legend()->setAlignment(Qt::AlignRight);
    return g;
}

QImage imagenDe(QChart* grafico, QSize tamano)
{
    QChartView vista(grafico);
    vista.setRenderHint(QPainter::Antialiasing);
    vista.setAttribute(Qt::WA_DontShowOnScreen);
    vista.resize(tamano);
    vista.show();
    QApplication::processEvents();
    // Twice the pixels, so that it stays sharp on paper.
    QImage imagen(tamano * 2, QImage::Format_RGB32);
    imagen.fill(Qt::white);
    QPainter pintor(&imagen);
    pintor.setRenderHint(QPainter::Antialiasing);
    vista.render(&pintor, QRectF(imagen.rect()), vista.viewport()->rect());
    pintor.end();
    return imagen;
}

// ---------------------------------------------------------------- the window

Grafico* Grafico::Mostrar(CALCULOS01& pantalla)
{
    auto* g = pantalla.findChild<Grafico*>(QString(), Qt::FindDirectChildrenOnly);
    if (g)
        g->Actualiza();
    else
        g = new Grafico(pantalla);
    g->show();
    g->raise();
    g->activateWindow();
    return g;
}

Grafico::Grafico(CALCULOS01& pantalla) : QDialog(&pantalla, Qt::Window), pantalla_(pantalla)
{
    setObjectName(QStringLiteral("Grafico"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Gráfico de ") + pantalla.windowTitle());
    resize(1150, 680);

    pestanas_ = new QTabWidget(this);
    for (const QString& nombre : {pantalla.Por_Meses() ? QStringLiteral("Por mes") : QStringLiteral("Por día"),
                                  QStringLiteral("Por servicio"), QStringLiteral("Por proveedor")}) {
        auto* v = new QChartView;
        v->setRenderHint(QPainter::Antialiasing);
        pestanas_->addTab(v, nombre);
    }

    auto* copiar = new QAction(QStringLiteral("Copiar imagen"), this);
    copiar->setObjectName(QStringLiteral("copiarImagen"));
    copiar->setShortcut(QKeySequence::Copy);
    connect(copiar, &QAction::triggered, this, &Grafico::copiarImagen);
    auto* guardarA = new QAction(QStringLiteral("Guardar como..."), this);
    guardarA->setObjectName(QStringLiteral("guardarComo"));
    guardarA->setShortcut(QKeySequence::Save);
    connect(guardarA, &QAction::triggered, this, &Grafico::guardarComo);
    addActions({copiar, guardarA});

    auto* botones = new QHBoxLayout;
    botones->addStretch();
    for (QAction* a : {copiar, guardarA}) {
        auto* b = new QPushButton(a->text(), this);
        b->setAutoDefault(false);
        b->setToolTip(a->shortcut().toString(QKeySequence::NativeText));
        connect(b, &QPushButton::clicked, a, &QAction::trigger);
        botones->addWidget(b);
    }
    auto* cerrar = new QPushButton(QStringLiteral("Cerrar"), this);
    cerrar->setAutoDefault(false);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::close);
    botones->addWidget(cerrar);
    auto* l = new QVBoxLayout(this);
    l->addWidget(pestanas_);
    l->addLayout(botones);

    connect(&pantalla, &CALCULOS01::Cargada, this, &Grafico::Actualiza);
    Actualiza();
}

QChartView* Grafico::vista(int pestana) const { return static_cast<QChartView*>(pestanas_->widget(pestana)); }
QChart* Grafico::grafico(int pestana) const { return vista(pestana)->chart(); }

void Grafico::Actualiza()
{
    const DatosGrafico d = datosDe(pantalla_);
    QChart* const nuevos[] = {graficoPorDia(d), graficoDeTorta(d.servicios, QStringLiteral("Por servicio — ") + d.titulo),
                              graficoDeTorta(d.proveedores, QStringLiteral("Por proveedor — ") + d.titulo)};
    for (int i = 0; i < 3; ++i) {
        QChart* antes = vista(i)->chart();
        vista(i)->setChart(nuevos[i]);
        delete antes; // the view lets the former chart go without deleting it
    }
}

QImage Grafico::imagen() const { return vista(pestanas_->currentIndex())->grab().toImage(); }

void Grafico::copiarImagen() const { QApplication::clipboard()->setImage(imagen()); }

void Grafico::guardarComo()
{
    const QString propuesto = QDir::home().filePath(QStringLiteral("grafico-") +
                                                    (pantalla_.Es_Usdt() ? QStringLiteral("usdt-") : QString()) +
                                                    pantalla_.Periodo_Archivo() + QStringLiteral(".png"));
    QString archivo = pideArchivo(this, QStringLiteral("Guardar gráfico"), propuesto,
                                  QStringLiteral("Imagen PNG (*.png);;Documento PDF (*.pdf)"));
    if (archivo.isEmpty())
        return;
    if (!archivo.endsWith(QLatin1String(".png"), Qt::CaseInsensitive) &&
        !archivo.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        archivo += QStringLiteral(".png");
    if (!guardar(archivo))
        Mensajes::MsgBox(QStringLiteral("No se pudo guardar el archivo ") + archivo, Mensajes::vbExclamation);
}

bool Grafico::guardar(const QString& archivo) const
{
    if (!archivo.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        return imagen().save(archivo, "PNG");
    // On a landscape page, drawn as lines and letters and not as a picture.
    QPdfWriter pdf(archivo);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageOrientation(QPageLayout::Landscape);
    pdf.setTitle(windowTitle());
    QPainter pintor;
    if (!pintor.begin(&pdf))
        return false;
    QChartView* v = vista(pestanas_->currentIndex());
    v->render(&pintor, QRectF(0, 0, pdf.width(), pdf.height()), v->viewport()->rect());
    return pintor.end();
}

void Grafico::Reemplazar(PideArchivo pide) { pideArchivo = pide ? std::move(pide) : PideArchivo(pideConDialogo); }
