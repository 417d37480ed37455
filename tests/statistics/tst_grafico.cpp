// The chart of the statistics screens over a month whose figures are known:
// its series and values, the largest eight and "Otros", the filters followed,
// the picture copied and saved; and the keys and menu entries of the five
// grids of every statistics screen, with the names their exports propose.
#include "calculos01_usdt.h"
#include "grafico.h"
#include "prueba.h"
#include "tst_grafico_datos.h"

#include <QApplication>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QClipboard>
#include <QComboBox>
#include <QLegend>
#include <QLegendMarker>
#include <QLineSeries>
#include <QMenu>
#include <QPieSeries>
#include <QPieSlice>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QValueAxis>

namespace {

using C = CALCULOS01;

QBarSeries* barras(QChart* g) { return static_cast<QBarSeries*>(g->series().at(0)); }
QLineSeries* linea(QChart* g) { return static_cast<QLineSeries*>(g->series().at(1)); }
QList<qreal> valores(const QBarSet* s)
{
    QList<qreal> r;
    for (int i = 0; i < s->count(); ++i)
        r << s->at(i);
    return r;
}
QList<QPieSlice*> tajadas(QChart* g) { return static_cast<QPieSeries*>(g->series().at(0))->slices(); }
// The slices as "name=amount", in the pie's order, the names from the legend.
QStringList rebanadas(QChart* g)
{
    QStringList r;
    const QList<QLegendMarker*> leyenda = g->legend()->markers();
    for (int i = 0; i < tajadas(g).size(); ++i)
        r << leyenda[i]->label().section(QLatin1Char(':'), 0, 0) + QLatin1Char('=') + QString::number(tajadas(g)[i]->value());
    return r;
}
std::vector<PorcionGrafico> porciones(const QList<double>& montos)
{
    std::vector<PorcionGrafico> r;
    for (double m : montos)
        r.push_back({QStringLiteral("P%1").arg(r.size() + 1), m});
    return r;
}
QStringList nombres(const std::vector<PorcionGrafico>& v)
{
    QStringList r;
    for (const PorcionGrafico& p : v)
        r << p.nombre + QLatin1Char('=') + QString::number(p.monto);
    return r;
}

} // namespace

class PruebaGrafico : public QObject {
    Q_OBJECT
private slots:
    void init() { QApplication::clipboard()->clear(); }
    void cleanup() { Grafico::Reemplazar({}); }

    void mes_dia_por_dia()
    {
        Estadistica<C> t("CALCULOS01");
        t.cargar();
        // A click on a heading sorts the grid; the chart keeps the calendar's order.
        t.p->GRID_HeadClick(C::colRecibido);
        Grafico* v = Grafico::Mostrar(*t.p);
        QChart* g = v->grafico(Grafico::tabDias);
        QCOMPARE(g->title(), QStringLiteral("Día por día — Marzo 2025 — Operadora: Todas — Servicio: Todos"));

        const QList<QBarSet*> sets = barras(g)->barSets();
        QCOMPARE(sets.size(), 2);
        QCOMPARE(sets[0]->label(), QStringLiteral("Recibido"));
        QCOMPARE(sets[1]->label(), QStringLiteral("Directos"));
        QList<qreal> recibido(31, 0), directos(31, 0);
        recibido[2] = 5500;
        recibido[7] = directos[7] = 50;
        recibido[30] = directos[30] = 250;
        QCOMPARE(valores(sets[0]), recibido);
        QCOMPARE(valores(sets[1]), directos);
        // The gain on its own axis at the right, a point a day.
        QLineSeries* ganancia = linea(g);
        QCOMPARE(ganancia->count(), 31);
        QCOMPARE(ganancia->at(2), QPointF(2, 55));
        QCOMPARE(ganancia->at(7), QPointF(7, 5));
        QCOMPARE(ganancia->at(30), QPointF(30, -3));
        QCOMPARE(g->axes(Qt::Vertical, ganancia).at(0)->alignment(), Qt::AlignRight);
        QVERIFY(static_cast<QValueAxis*>(g->axes(Qt::Vertical, ganancia).at(0))->min() <= -3);

        // Saturdays and Sundays stand apart, in both sets.
        const QList<int> finDeSemana {0, 1, 7, 8, 14, 15, 21, 22, 28, 29};
        for (const QBarSet* s : sets) {
            QList<int> elegidas = s->selectedBars();
            std::sort(elegidas.begin(), elegidas.end());
            QCOMPARE(elegidas, finDeSemana);
        }
        QVERIFY(sets[0]->selectedColor() != sets[0]->color());
        const auto* dias = static_cast<QBarCategoryAxis*>(g->axes(Qt::Horizontal)[0]);
        QCOMPARE(dias->count(), 31);
        QCOMPARE(dias->at(0), QStringLiteral("Sab 01"));
        QCOMPARE(dias->at(30), QStringLiteral("Lun 31"));
        QVERIFY(g->localizeNumbers());
        QCOMPARE(g->locale().toString(5500.0, 'f', 0), QStringLiteral("5.500")); // the business's marks
    }

    void participaciones()
    {
        Estadistica<C> t("CALCULOS01");
        t.cargar();
        Grafico* v = Grafico::Mostrar(*t.p);
        QCOMPARE(rebanadas(v->grafico(Grafico::tabServicios)), QStringList({"ZELLE=3250", "TRUMIN=2500", "ZINLI=50"}));
        // Ten providers: the largest eight, then the two smallest as "Otros".
        QCOMPARE(rebanadas(v->grafico(Grafico::tabProveedores)),
                 QStringList({"PROV 10=1000", "PROV 09=900", "PROV 08=800", "PROV 07=700", "PROV 06=600", "PROV 05=500",
                              "PROV 02=450", "PROV 04=400", "Otros=450"}));
        // The legend with the money and the share, the pie with the share
        // of the slices wide enough to show it.
        QChart* servicios = v->grafico(Grafico::tabServicios);
        QCOMPARE(servicios->legend()->markers()[0]->label(), QStringLiteral("ZELLE: 3.250 (56,0 %)"));
        QCOMPARE(tajadas(servicios)[0]->label(), QStringLiteral("56,0 %"));
        QVERIFY(tajadas(servicios)[0]->isLabelVisible());
        QCOMPARE(tajadas(servicios)[2]->label(), QStringLiteral("0,9 %"));
        QVERIFY(!tajadas(servicios)[2]->isLabelVisible());
    }

    void mayores_y_otros_data()
    {
        QTest::addColumn<QList<double>>("montos");
        QTest::addColumn<QStringList>("porciones");
        QTest::newRow("ninguna") << QList<double> {} << QStringList {};
        QTest::newRow("sin dinero") << QList<double> {0, -5} << QStringList {};
        QTest::newRow("ordenadas") << QList<double> {1, 3, 2} << QStringList({"P2=3", "P3=2", "P1=1"});
        // Nine slices: "Otros" would stand for one name, so the ninth keeps its own.
        QTest::newRow("nueve") << QList<double> {9, 8, 7, 6, 5, 4, 3, 2, 1}
                               << QStringList({"P1=9", "P2=8", "P3=7", "P4=6", "P5=5", "P6=4", "P7=3", "P8=2", "P9=1"});
        QTest::newRow("once, una en cero") << QList<double> {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0}
                                           << QStringList({"P10=10", "P9=9", "P8=8", "P7=7", "P6=6", "P5=5", "P4=4", "P3=3",
                                                           "Otros=3"});
    }
    void mayores_y_otros()
    {
        QFETCH(QList<double>, montos);
        QFETCH(QStringList, porciones);
        QCOMPARE(nombres(mayoresYOtros(::porciones(montos))), porciones);
    }

    // The open chart draws the figures again after each load, whichever
    // filter brought it.
    void sigue_los_filtros_data()
    {
        QTest::addColumn<int>("operadora");
        QTest::addColumn<QString>("servicio"); // an entry of Combo1; empty: none chosen
        QTest::addColumn<QString>("filtros");
        QTest::addColumn<double>("dia3");
        QTest::addColumn<double>("dia31");
        QTest::newRow("Noelina") << int(C::opNoelina) << QString() << "Operadora: Noelina — Servicio: Todos" << 4000.0 << 250.0;
        QTest::newRow("Ramil") << int(C::opRamil) << QString() << "Operadora: Ramil — Servicio: Todos" << 1500.0 << 0.0;
        QTest::newRow("ZELLE") << int(C::opTodas) << "02 - ZELLE" << "Operadora: Todas — Servicio: ZELLE" << 3000.0 << 250.0;
        QTest::newRow("Noelina y TRUMIN") << int(C::opNoelina) << "01 - TRUMIN" << "Operadora: Noelina — Servicio: TRUMIN"
                                          << 1600.0 << 0.0;
    }
    void sigue_los_filtros()
    {
        QFETCH(int, operadora);
        QFETCH(QString, servicio);
        QFETCH(QString, filtros);
        QFETCH(double, dia3);
        QFETCH(double, dia31);
        Estadistica<C> t("CALCULOS01");
        t.cargar();
        Grafico* v = Grafico::Mostrar(*t.p);
        t.p->Option2[size_t(operadora)]->click();
        if (!servicio.isEmpty()) {
            const int i = t.p->Combo1->findText(servicio);
            QVERIFY(i > 0);
            t.p->Combo1->setCurrentIndex(i);
            emit t.p->Combo1->activated(i);
        }
        QCOMPARE(Grafico::Mostrar(*t.p), v); // one chart to a screen
        QChart* g = v->grafico(Grafico::tabDias);
        QVERIFY(g->title().endsWith(filtros));
        QCOMPARE(barras(g)->barSets()[0]->at(2), dia3);
        QCOMPARE(barras(g)->barSets()[0]->at(30), dia31);
        QVERIFY(v->grafico(Grafico::tabServicios)->title().endsWith(filtros));
    }

    void ano_mes_por_mes()
    {
        Estadistica<Resumen_mensual> t("Resumen_mensual");
        t.cargar();
        QChart* g = Grafico::Mostrar(*t.p)->grafico(Grafico::tabDias);
        QCOMPARE(g->title(), QStringLiteral("Mes por mes — Año 2025 — Operadora: Todas — Servicio: Todos"));
        auto* meses = static_cast<QBarCategoryAxis*>(g->axes(Qt::Horizontal)[0]);
        QCOMPARE(meses->categories(),
                 QStringList({"Ene", "Feb", "Mar", "Abr", "May", "Jun", "Jul", "Ago", "Sep", "Oct", "Nov", "Dic"}));
        QCOMPARE(barras(g)->barSets()[0]->at(2), 5800.0);
        QCOMPARE(barras(g)->barSets()[1]->at(2), 300.0);
        QCOMPARE(linea(g)->at(2).y(), 57.0);
        QCOMPARE(linea(g)->count(), 3); // no gain drawn for the months after the last with figures
        QVERIFY(barras(g)->barSets()[0]->selectedBars().isEmpty());
    }

    void copiar_y_guardar_data()
    {
        QTest::addColumn<QString>("elegido"); // the file answered by the dialog
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QByteArray>("firma");
        QTest::newRow("png") << "grafico.png" << "grafico.png" << QByteArray("\x89PNG");
        QTest::newRow("pdf") << "grafico.PDF" << "grafico.PDF" << QByteArray("%PDF");
        QTest::newRow("sin extensión") << "grafico" << "grafico.png" << QByteArray("\x89PNG");
        QTest::newRow("cancelado") << "" << "" << QByteArray();
        QTest::newRow("carpeta que no existe") << "no/existe.png" << "" << QByteArray();
    }
    void copiar_y_guardar()
    {
        QFETCH(QString, elegido);
        QFETCH(QString, escrito);
        QFETCH(QByteArray, firma);
        QTemporaryDir dir;
        Estadistica<C> t("CALCULOS01");
        t.cargar();
        Grafico* v = Grafico::Mostrar(*t.p);
        v->pestanas()->setCurrentIndex(Grafico::tabProveedores);
        QString titulo, propuesto;
        Grafico::Reemplazar([&](QWidget*, const QString& t, const QString& p, const QString&) {
            titulo = t;
            propuesto = p;
            return elegido.isEmpty() ? QString() : dir.filePath(elegido);
        });
        v->findChild<QAction*>(QStringLiteral("guardarComo"))->trigger();
        QCOMPARE(titulo, QStringLiteral("Guardar gráfico"));
        QVERIFY(propuesto.endsWith(QLatin1String("/grafico-2025-03.png")));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), escrito.isEmpty() ? QStringList() : QStringList {escrito});
        if (!escrito.isEmpty()) {
            QFile f(dir.filePath(escrito));
            QVERIFY(f.open(QIODevice::ReadOnly));
            QVERIFY(f.size() > 1000);
            QCOMPARE(f.read(firma.size()), firma);
        }
        QCOMPARE(t.s.ultimoMensaje(),
                 elegido.contains('/') ? QStringLiteral("No se pudo guardar el archivo ") + dir.filePath(elegido) : QString());

        // "Copiar imagen": the chart in view, as large as it is shown.
        v->findChild<QAction*>(QStringLiteral("copiarImagen"))->trigger();
        const QImage copiada = QApplication::clipboard()->image();
        QVERIFY(!copiada.isNull());
        QCOMPARE(copiada.size(), v->vista(Grafico::tabProveedores)->size() * v->devicePixelRatio());
    }

    // On every statistics screen: the two entries after "Copiar" on the
    // menu of each of the five grids, the screen's own keys, and the file
    // and sheets an export of any grid proposes.
    void menus_teclas_y_exportacion_data()
    {
        QTest::addColumn<QString>("pantalla");
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<QString>("primeraHoja");
        const QDate hoy = QDate::currentDate();
        QTest::newRow("diaria") << "CALCULOS01" << "estadisticas-2025-03" << "Por día";
        QTest::newRow("mensual") << "Resumen_mensual" << "estadisticas-2025" << "Por mes";
        QTest::newRow("diaria USDT") << "CALCULOS01_USDT" << "estadisticas-usdt-2025-03" << "Por día";
        // No period is asked there: the twelve months that end with this one.
        QTest::newRow("mensual USDT") << "RESUMEN_MENSUAL_USDT"
                                      << (hoy.month() == 12 ? QStringLiteral("estadisticas-usdt-%1").arg(hoy.year())
                                                            : QStringLiteral("estadisticas-usdt-%1-a-%2")
                                                                  .arg(hoy.addMonths(-11).toString(QStringLiteral("yyyy-MM")),
                                                                       hoy.toString(QStringLiteral("yyyy-MM"))))
                                      << "Por mes";
    }
    void menus_teclas_y_exportacion()
    {
        QFETCH(QString, pantalla);
        QFETCH(QString, archivo);
        QFETCH(QString, primeraHoja);
        Estadistica<C> t(qPrintable(pantalla));
        t.cargar(QStringLiteral("2025"), QStringLiteral("3"));
        C* p = t.p;
        QCOMPARE(p->Accion_Grafico->shortcut(), QKeySequence(QStringLiteral("Ctrl+G")));
        QCOMPARE(p->Accion_Informe->shortcut(), QKeySequence(QStringLiteral("Ctrl+P")));
        for (QAction* a : {p->Accion_Grafico, p->Accion_Informe}) {
            QCOMPARE(a->shortcutContext(), Qt::WidgetWithChildrenShortcut);
            QVERIFY(p->actions().contains(a));
        }
        const QList<Rejilla*> grids {p->GRID, p->GRID1, p->GRID2, p->GRID4, p->GRID5};
        for (Rejilla* g : grids) {
            QStringList entradas;
            for (const QAction* a : g->menuContextual()->actions())
                entradas << (a->isSeparator() ? QStringLiteral("-") : a->text());
            QCOMPARE(entradas, QStringList({"Copiar", "Exportar a hoja de cálculo...", "-", "Gráfico...", "Imprimir informe..."}));
            QCOMPARE(g->nombreArchivo(), archivo);
            const std::vector<HojaExportada> hojas = g->hojas();
            QCOMPARE(hojas.size(), size_t(5));
            QStringList nombres;
            for (size_t i = 0; i < hojas.size(); ++i) {
                nombres << hojas[i].nombre;
                QCOMPARE(hojas[i].rejilla, grids[int(i)]);
            }
            QCOMPARE(nombres, QStringList({primeraHoja, "Proveedores", "Clientes", "Bancos", "Servicios"}));
        }

        // Ctrl+G in a grid opens the screen's chart.
        QVERIFY(!p->findChild<Grafico*>());
        QApplication::setActiveWindow(t.s.principal.get());
        p->GRID2->vista()->setFocus();
        QTest::keyClick(p->GRID2->vista(), Qt::Key_G, Qt::ControlModifier);
        QVERIFY(p->findChild<Grafico*>());
        QCOMPARE(p->findChild<Grafico*>()->pestanas()->tabText(0), primeraHoja);
    }
};

REGISTRAR_PRUEBA(PruebaGrafico);
#include "tst_grafico.moc"
