// The cell matrix and the grid that shows it: what the catalogue screens and
// the consoles count on when they load, edit, mark, walk and sort rows.
#include "celdas.h"
#include "escribir.h"
#include "fallo.h"
#include "fallo_esperado.h"
#include "prueba.h"
#include "rejilla.h"
#include "valor.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>

namespace {

QStringList columna(const Celdas& c, int col)
{
    QStringList r;
    for (int i = std::max(c.LowerBound(1), 0); i <= c.UpperBound(1); ++i)
        r << c.Value(i, col).texto();
    return r;
}

// A catalogue as its screen loads it: code, description, flag "0".
void cargarCatalogo(Celdas& c, const QStringList& nombres)
{
    c.ReDim(-1, -1, 0, 2);
    int i = -1;
    for (const QString& n : nombres) {
        ++i;
        c.ReDim(0, i, 0, 2);
        c.Value(i, 0) = QStringLiteral("%1").arg(i + 1, 4, 10, QLatin1Char('0'));
        c.Value(i, 1) = n;
        c.Value(i, 2) = QStringLiteral("0");
    }
}

// The grid on screen, for the tests that drive it by keyboard or mouse.
void mostrar(Rejilla& g, Celdas& c)
{
    g.resize(400, 200);
    g.show();
    g.Array(c);
}

// What the grid shows in a cell, and down a column.
QString mostrado(Rejilla& g, int fila, int col) { return g.modelo()->index(fila, col).data().toString(); }
QStringList mostrado(Rejilla& g, int col)
{
    QStringList r;
    for (int f = 0; f < g.modelo()->rowCount(); ++f)
        r << mostrado(g, f, col);
    return r;
}

Qt::Alignment alineacion(Rejilla& g, int fila, int col)
{
    return g.modelo()->data(g.modelo()->index(fila, col), Qt::TextAlignmentRole).value<Qt::Alignment>() &
           Qt::AlignHorizontal_Mask;
}

} // namespace

class PruebaCeldas : public QObject {
    Q_OBJECT

private slots:
    void matrizNuevaVaciadaYSusLimites()
    {
        QCOMPARE(Celdas().UpperBound(1), -1);
        Celdas c;
        c.ReDim(0, 4, 0, 31);
        c.Value(4, 31) = QStringLiteral("x");
        c.ReDim(-1, -1, 0, 31);
        QCOMPARE((QList<int> {c.LowerBound(1), c.UpperBound(1), c.LowerBound(2), c.UpperBound(2), c.filas()}),
                 (QList<int> {-1, -1, 0, 31, 0}));
        // An emptied matrix holds no cell: a walk visits nothing, a sort of
        // its bounds moves nothing, and row -1 is out of range.
        QVERIFY(c.Vacia());
        QVERIFY(c.Filas().empty());
        QCOMPARE(numeroDeFallo([&] { c.QuickSort(c.LowerBound(1), c.UpperBound(1), 31); }), 0L);
        QCOMPARE(numeroDeFallo([&] { c.Value(-1, 0); }), 9L);
        c.ReDim(0, 0, 0, 31);
        QVERIFY(!c.Vacia());
        QCOMPARE(c.Filas().size(), size_t(1));
        QVERIFY(c.Value(0, 31).esVacia());

        // Out of the bounds is failure 9, reading or writing.
        c.ReDim(0, 1, 0, 2);
        const Celdas& lectura = c;
        for (const auto& fuera : std::initializer_list<std::function<void()>> {
                 [&] { c.Value(2, 0) = QStringLiteral("x"); }, [&] { lectura.Value(0, 3); }, [&] { c.UpperBound(3); },
                 [&] { c.QuickSort(0, 2, 0); }})
            QCOMPARE(numeroDeFallo(fuera), 9L);
        QCOMPARE(numeroDeFallo([&] { c.Value(1, 2) = 5; }), 0L);
    }

    void reDimConservaLoQueQuedaDentro()
    {
        Celdas c;
        c.ReDim(0, 2, 0, 3);
        for (int f = 0; f <= 2; ++f)
            for (int k = 0; k <= 3; ++k)
                c.Value(f, k) = QStringLiteral("%1-%2").arg(f).arg(k);
        c.ReDim(0, 5, 0, 6); // grows both ways
        QCOMPARE(QStringList({c.Value(2, 3).texto(), c.Value(0, 0).texto(), c.Value(5, 6).texto(), c.Value(1, 5).texto()}),
                 QStringList({"2-3", "0-0", "", ""}));
        c.ReDim(1, 2, 1, 2); // shrinks and moves the lower bounds
        QCOMPARE(QStringList({c.Value(1, 1).texto(), c.Value(2, 2).texto()}), QStringList({"1-1", "2-2"}));
        for (const auto& fuera : {std::pair {0, 0}, {1, 3}})
            QCOMPARE(numeroDeFallo([&] { c.Value(fuera.first, fuera.second); }), 9L);
        c.ReDim(1, 3, 1, 2); // only the last row moves
        QCOMPARE(c.Value(2, 1).texto(), QStringLiteral("2-1"));
        QVERIFY(c.Value(3, 2).esVacia());
    }

    void celdasSinTipo()
    {
        const Celda vacia;
        QVERIFY(vacia.esVacia());
        QVERIFY(vacia == 0);
        QCOMPARE(vacia.Len(), 0);
        QCOMPARE(vacia.numero(), 0.0);

        // Written as the run-time writes it; a flag as -1 or 0.
        const std::pair<Celda, const char*> textos[] = {{Celda(94.3), "94,3"},
                                                        {Celda(1234567.5), "1234567,5"},
                                                        {Celda(true), "-1"},
                                                        {Celda(false), "0"},
                                                        {Celda(Valor(QStringLiteral("ZELLE"))), "ZELLE"}};
        for (const auto& [celda, texto] : textos)
            QCOMPARE(celda.texto(), QString::fromUtf8(texto));
        QCOMPARE(Celda(QStringLiteral("1.234,50")).numero(), 1234.5);
        QVERIFY(Celda(QStringLiteral("1.234,50")) == 1234.5);
        QVERIFY(!(Celda(QStringLiteral("BANESCO")) == 0));
        QCOMPARE(numeroDeFallo([] { Celda(QStringLiteral("BANESCO")).numero(); }), 13L);
        QVERIFY(Celda(QStringLiteral("1")) == 1);

        // A flag: only true (or -1) counts as a mark.
        QVERIFY(Celda(true).esVerdadero() && Celda(-1).esVerdadero());
        QVERIFY(Celda(true) == true);
        for (const Celda& c : {Celda(QStringLiteral("0")), Celda(QString()), Celda(), Celda(false), Celda(QStringLiteral("1")),
                               Celda(QStringLiteral("Verdadero"))})
            QVERIFY(!c.esVerdadero());

        // A field of a result set.
        QVERIFY(Celda(Valor()).esVacia());
        QVERIFY(Celda(Valor(int64_t(7))).esNumero());
    }

    void ordenComoTextoYComoNumero()
    {
        Celdas c;
        c.ReDim(0, 5, 0, 1);
        const QStringList montos = {"99,00", "1.234,50", "", "5", "abc", "10"};
        for (int i = 0; i < montos.size(); ++i) {
            c.Value(i, 0) = montos[i];
            c.Value(i, 1) = QStringLiteral("fila%1").arg(i);
        }
        c.QuickSort(0, 5, 0);
        QCOMPARE(columna(c, 0), QStringList({"", "1.234,50", "10", "5", "99,00", "abc"}));
        // Whole rows move with their key.
        QCOMPARE(columna(c, 1), QStringList({"fila2", "fila1", "fila5", "fila3", "fila0", "fila4"}));

        c.QuickSort(0, 5, 0, Celdas::Clave::Numero);
        QCOMPARE(columna(c, 0), QStringList({"", "5", "10", "99,00", "1.234,50", "abc"}));
        c.QuickSort(0, 5, 0, Celdas::Clave::Numero, Celdas::Orden::Descendente);
        QCOMPARE(columna(c, 0), QStringList({"abc", "1.234,50", "99,00", "10", "5", ""}));

        // Equal keys keep their order; a sort of a range leaves the rest alone.
        c.ReDim(0, 4, 0, 1);
        const QStringList claves = {"B", "A", "B", "A", "0"};
        for (int i = 0; i < 5; ++i) {
            c.Value(i, 0) = claves[i];
            c.Value(i, 1) = i;
        }
        c.QuickSort(0, 3, 0); // the last row is outside the range
        QCOMPARE(columna(c, 0), QStringList({"A", "A", "B", "B", "0"}));
        QCOMPARE(columna(c, 1), QStringList({"1", "3", "0", "2", "4"}));
    }
};

class PruebaRejilla : public QObject {
    Q_OBJECT

private slots:
    void disenoDeColumnas()
    {
        Celdas c;
        c.ReDim(0, 1, 0, 3);
        c.Value(0, 3) = QStringLiteral("oculta");
        c.Value(0, 1) = QStringLiteral("texto");
        c.Value(1, 1) = 17.5;
        Rejilla g(QStringLiteral("GRID"));
        g.Columns(0).setWidth(1100).setCaption(QStringLiteral("Fecha")).setAlignment(Alineacion::Centro);
        g.Columns(1).setWidth(600).setCaption(QStringLiteral("Sec.\rNro")).setHeadAlignment(Alineacion::Centro);
        g.Columns(2).setWidth(1).setAlignment(Alineacion::Derecha);
        g.Columns(3).setVisible(false);
        g.Columns(2).setOrder(0);
        g.Array(c);

        // Widths in twips, 15 to a pixel; a width of 1 loads the column out of sight.
        QHeaderView* h = g.vista()->horizontalHeader();
        QCOMPARE(h->sectionSize(0), 1100 / 15);
        QCOMPARE(h->sectionSize(2), 0);
        QCOMPARE(g.modelo()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Sec.\nNro"));
        QCOMPARE(g.modelo()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>() &
                     Qt::AlignHorizontal_Mask,
                 Qt::AlignHCenter);
        // With no alignment set, text goes left and numbers right.
        QCOMPARE(QList<Qt::Alignment>({alineacion(g, 0, 2), alineacion(g, 0, 1), alineacion(g, 1, 1)}),
                 QList<Qt::Alignment>({Qt::AlignRight, Qt::AlignLeft, Qt::AlignRight}));
        QCOMPARE(mostrado(g, 1, 1), QStringLiteral("17,5"));
        QCOMPARE(g.Columns(0).Order(), 1);
        QCOMPARE(mostrado(g, 0, 3), QStringLiteral("oculta")); // a hidden column keeps its cell for the screen

        // A new load, empty or not, keeps the layout.
        for (int filas : {0, 3}) {
            c.ReDim(filas ? 0 : -1, filas - 1, 0, 3);
            g.ReBind();
            QCOMPARE(g.modelo()->rowCount(), filas);
        }
        QCOMPARE(h->sectionSize(0), 1100 / 15);
        QVERIFY(h->isSectionHidden(3));
        QCOMPARE(g.Columns(2).Order(), 0);
    }

    // The model over the cells keeps Qt's contract of a table model through
    // what the screens do to a grid: bind, grow, sort, empty, rebind.
    void modeloBajoElProbadorDeQt()
    {
        Celdas c;
        Rejilla g(QStringLiteral("GRID"));
        QAbstractItemModelTester probador(g.modelo(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        cargarCatalogo(c, {"BOFA", "CHASE", "WELLS"});
        g.Array(c);
        QCOMPARE(g.modelo()->rowCount(), 3);
        cargarCatalogo(c, {"ZETA", "ALFA", "MEDIO", "OTRO", "ULTIMO"});
        g.ReBind();
        QCOMPARE(g.modelo()->rowCount(), 5);
        g.ordenarPorColumna(1, false);
        QCOMPARE(mostrado(g, 0, 1), QStringLiteral("ALFA"));
        QVERIFY(g.modelo()->setData(g.modelo()->index(0, 1), QStringLiteral("BETA")));
        c.ReDim(-1, -1, 0, 2);
        g.ReBind();
        QCOMPARE(g.modelo()->rowCount(), 0);
        g.Refresh();
        cargarCatalogo(c, {"UNO"});
        g.Array(c);
        QCOMPARE(g.modelo()->rowCount(), 1);
    }

    void edicionPorElModelo()
    {
        Celdas c;
        cargarCatalogo(c, {"BOFA", "CHASE", "WELLS"});
        Rejilla g(QStringLiteral("GRID"));
        g.Columns(0).setAllowFocus(false);
        g.Columns(2).setVisible(false);
        g.Array(c);
        QSignalSpy despues(&g, &Rejilla::AfterColEdit);

        QAbstractItemModel* m = g.modelo();
        QVERIFY(m->setData(m->index(1, 1), QStringLiteral("CITI")));
        QCOMPARE(c.Value(1, 1).texto(), QStringLiteral("CITI"));
        QCOMPARE(despues.count(), 1);
        QCOMPARE(despues.at(0).at(0).toInt(), 1);

        // A code column takes no edit, nor any column of a locked or read-only grid.
        QVERIFY(!(m->flags(m->index(0, 0)) & Qt::ItemIsEditable));
        QVERIFY(!m->setData(m->index(0, 0), QStringLiteral("9999")));
        g.Columns(1).setLocked(true);
        QVERIFY(!m->setData(m->index(0, 1), QStringLiteral("x")));
        g.Columns(1).setLocked(false);
        g.setAllowUpdate(false);
        QVERIFY(!(m->flags(m->index(0, 1)) & Qt::ItemIsEditable));
        QVERIFY(!m->setData(m->index(0, 1), QStringLiteral("x")));
        QCOMPARE(columna(c, 0), QStringList({"0001", "0002", "0003"}));
        QCOMPARE(columna(c, 1), QStringList({"BOFA", "CITI", "WELLS"}));
        QCOMPARE(despues.count(), 1);
    }

    void enterConfirmaYUpdateTambien()
    {
        Celdas c;
        cargarCatalogo(c, {"BOFA", "CHASE"});
        Rejilla g(QStringLiteral("GRID"));
        mostrar(g, c);
        QSignalSpy despues(&g, &Rejilla::AfterColEdit);

        escribirEnCelda(g, 1, 1, QStringLiteral("CITI"));
        QCOMPARE(despues.count(), 1);

        // A cell opened and left untouched is no edit.
        const auto abrir = [&] {
            g.setBookmark(0);
            g.vista()->edit(g.vista()->currentIndex());
            return editorAbierto(g.vista());
        };
        auto* editor = abrir();
        QVERIFY(editor);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // Enter commits once the editor is done with the key
        QCOMPARE(editorAbierto(g.vista()), nullptr);
        QCOMPARE(despues.count(), 1);

        // Update commits what is being typed, as the saving buttons need.
        editor = abrir();
        QVERIFY(editor);
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("MERCANTIL"));
        QCOMPARE(c.Value(0, 1).texto(), QStringLiteral("BOFA"));
        g.Update();
        QCOMPARE(c.Value(0, 1).texto(), QStringLiteral("MERCANTIL"));
        QCOMPARE(despues.count(), 2);
        g.Update(); // nothing under edit any more
        QCOMPARE(despues.count(), 2);
    }

    void filaActualYSeleccion()
    {
        Celdas c;
        cargarCatalogo(c, {"A", "B", "C"});
        Rejilla g(QStringLiteral("GRID"));
        g.Array(c);
        QCOMPARE(g.Bookmark(), -1);
        QCOMPARE(numeroDeFallo([&] { g.SelBookmark0(); }), 9L);
        g.setBookmark(2);
        QCOMPARE(g.Bookmark(), 2);
        QCOMPARE(g.SelBookmark0(), 2);
        g.setCol(1);
        QCOMPARE(g.Col(), 1);
        QCOMPARE(g.Bookmark(), 2);
        g.setBookmark(7); // beyond the rows shown: no current row
        QCOMPARE(g.Bookmark(), -1);
        g.vista()->selectionModel()->select(g.modelo()->index(1, 0), QItemSelectionModel::Select);
        g.vista()->selectionModel()->select(g.modelo()->index(0, 1), QItemSelectionModel::Select);
        QCOMPARE(g.SelBookmark0(), 0);
        QCOMPARE(g.SelBookmarks(), QList<int>({0, 1, 2}));
    }

    void clicsEnCabeceraYEnCelda()
    {
        Celdas c;
        c.ReDim(0, 2, 0, 1);
        const QStringList nombres = {"Pedro", "ana", "Luis"}, montos = {"1.234,50", "99,00", "5,00"};
        for (int i = 0; i < 3; ++i) {
            c.Value(i, 0) = nombres[i];
            c.Value(i, 1) = montos[i];
        }
        Rejilla g(QStringLiteral("GRID"));
        mostrar(g, c);
        QSignalSpy cabeza(&g, &Rejilla::HeadClick);
        QHeaderView* h = g.vista()->horizontalHeader();
        const auto clicEn = [&](int col) {
            QTest::mouseClick(h->viewport(), Qt::LeftButton, {}, QPoint(h->sectionViewportPosition(col) + 5, 5));
        };
        clicEn(1);
        QCOMPARE(cabeza.count(), 1);
        QCOMPARE(cabeza.at(0).at(0).toInt(), 1);
        // The click alone neither sorts nor selects.
        QCOMPARE(columna(c, 1), montos);
        QVERIFY(g.SelBookmarks().isEmpty());

        // The screen's answer: column 0 as text, column 1 by value.
        QObject::connect(&g, &Rejilla::HeadClick, &g, [&](int col) { g.ordenarPorColumna(col, col != 0); });
        clicEn(1);
        QCOMPARE(mostrado(g, 1), QStringList({"5,00", "99,00", "1.234,50"}));
        QCOMPARE(mostrado(g, 0), QStringList({"Luis", "ana", "Pedro"}));
        clicEn(0);
        QCOMPARE(mostrado(g, 0), QStringList({"Luis", "Pedro", "ana"}));
        QCOMPARE(mostrado(g, 1), QStringList({"5,00", "1.234,50", "99,00"}));

        // A click on a cell selects its row; a double click opens no editor.
        QSignalSpy doble(&g, &Rejilla::DblClick);
        QSignalSpy clic(&g, &Rejilla::Click);
        QTableView* v = g.vista();
        const QPoint p = v->visualRect(g.modelo()->index(1, 1)).center();
        QTest::mouseClick(v->viewport(), Qt::LeftButton, {}, p);
        QCOMPARE(clic.count(), 1);
        QCOMPARE(g.SelBookmark0(), 1);
        QTest::mouseDClick(v->viewport(), Qt::LeftButton, {}, p);
        QCOMPARE(doble.count(), 1);
        QCOMPARE(editorAbierto(v), nullptr);
    }

    void piesBajoSusColumnas()
    {
        Celdas c;
        c.ReDim(0, 3, 0, 5);
        Rejilla g(QStringLiteral("GRID"));
        for (int k = 0; k <= 5; ++k)
            g.Columns(k).setWidth(1500).setCaption(QStringLiteral("C%1").arg(k)).setFooterText(QString::number(k));
        g.Columns(2).setAlignment(Alineacion::Derecha);
        g.Columns(3).setAlignment(Alineacion::Centro);
        g.setColumnFooters(true);
        g.resize(350, 220);
        g.show();
        g.Array(c);
        QCoreApplication::processEvents();

        QCOMPARE(g.pie(4)->text(), QStringLiteral("4"));
        // Read aloud with the heading of its column, also one given later, on two lines.
        QCOMPARE(g.pie(4)->accessibleName(), QStringLiteral("C4: 4"));
        g.Columns(4).setCaption(QStringLiteral("Pagado\rBs"));
        QCOMPARE(g.pie(4)->accessibleName(), QStringLiteral("Pagado Bs: 4"));
        QCOMPARE(g.pie(4)->accessibleDescription(), QStringLiteral("Pie de la columna Pagado Bs"));
        // A figure changed or emptied is heard as it is seen; a column without
        // a heading is named by its place.
        g.Columns(4).setFooterText(QStringLiteral(" 7 "));
        QCOMPARE(g.pie(4)->accessibleName(), QStringLiteral("Pagado Bs: 7"));
        g.Columns(4).setFooterText(QString());
        QCOMPARE(g.pie(4)->accessibleName(), QStringLiteral("Pagado Bs"));
        g.Columns(5).setCaption(QString());
        QCOMPARE(g.pie(5)->accessibleName(), QStringLiteral("5"));
        QCOMPARE(g.pie(5)->accessibleDescription(), QStringLiteral("Pie de la columna 6"));
        QVERIFY(g.pie(2)->alignment() & Qt::AlignRight);
        QVERIFY(g.pie(3)->alignment() & Qt::AlignHCenter);

        QScrollBar* barra = g.vista()->horizontalScrollBar();
        const std::pair<const char*, std::function<void()>> pasos[] = {
            {"al mostrar", [] {}},
            {"tras ensanchar", [&] { g.Columns(1).setWidth(2400); }},
            {"tras arrastrar", [&] { g.vista()->horizontalHeader()->resizeSection(0, 40); }}, // by the operator's hand
            {"tras mover", [&] { g.Columns(4).setOrder(0); }},
            {"tras ocultar", [&] { g.Columns(2).setVisible(false); }},
            {"tras desplazar", [&] { barra->setValue(barra->maximum() / 2); }},
            {"al final", [&] { barra->setValue(barra->maximum()); }},
            {"tras agrandar", [&] { g.resize(900, 220); }},
        };
        for (const auto& [momento, paso] : pasos) {
            paso();
            verificarPies(g, momento);
        }
        QVERIFY(g.pie(2)->isHidden());

        g.setColumnFooters(false);
        QCoreApplication::processEvents();
        QVERIFY(!g.pie(0)->isVisibleTo(&g));
    }

    void cienMilFilasDeAltoFijo()
    {
        // The console's load: one row at a time, 32 columns, then read back and shown.
        Celdas c;
        c.ReDim(-1, -1, 0, 31);
        for (int i = 0; i < 100000; ++i) {
            c.ReDim(0, i, 0, 31);
            c.Value(i, 0) = i;
            c.Value(i, 1) = QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0'));
            c.Value(i, 17) = 0;
        }
        Rejilla g(QStringLiteral("GRID"));
        g.setFontSize(12);
        g.setRowHeight(300);
        g.resize(600, 400);
        g.show();
        g.Array(c);
        g.setBookmark(99999);
        QCoreApplication::processEvents();
        QHeaderView* vh = g.vista()->verticalHeader();
        QCOMPARE(vh->sectionResizeMode(0), QHeaderView::Fixed);
        g.setFontSize(20); // a larger font keeps the height set by the screen
        QCOMPARE(QList<int>({vh->sectionSize(0), vh->sectionSize(50000), vh->sectionSize(99999)}), QList<int>({20, 20, 20}));
        QCOMPARE(g.Bookmark(), 99999);
        QCOMPARE(mostrado(g, 99999, 1), QStringLiteral("99999"));
    }

private:
    // Each shown footer spans exactly its column, in the grid's coordinates,
    // just below the rows; a hidden column's footer is hidden.
    static void verificarPies(Rejilla& g, const char* momento)
    {
        QCoreApplication::processEvents();
        const QHeaderView* h = g.vista()->horizontalHeader();
        const QWidget* vp = g.vista()->viewport();
        const int fondo = vp->mapTo(&g, QPoint(0, vp->height())).y();
        QStringList pies, columnas;
        for (int k = 0; k < h->count(); ++k) {
            const QLabel* l = g.pie(k);
            const QPoint esquina = l->mapTo(&g, QPoint(0, 0));
            pies << (l->isHidden()         ? QStringLiteral("oculto")
                     : !l->isVisibleTo(&g) ? QStringLiteral("invisible")
                     : esquina.y() < fondo ? QStringLiteral("sobre las filas")
                                           : QStringLiteral("%1+%2").arg(esquina.x()).arg(l->width()));
            columnas << (h->isSectionHidden(k) ? QStringLiteral("oculto")
                                               : QStringLiteral("%1+%2")
                                                     .arg(vp->mapTo(&g, QPoint(h->sectionViewportPosition(k), 0)).x())
                                                     .arg(h->sectionSize(k)));
        }
        QVERIFY2(pies == columnas,
                 qPrintable(QStringLiteral("%1: pies %2, columnas %3").arg(momento, pies.join(' '), columnas.join(' '))));
    }
};

REGISTRAR_PRUEBA(PruebaCeldas);
REGISTRAR_PRUEBA(PruebaRejilla);
#include "tst_rejilla.moc"
