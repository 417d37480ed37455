// The consoles driven as an operator drives them: long texts and amounts,
// empty grids, filters from the keyboard, searches typed without capitals or
// accents, and the run-time report.
#include "clientes.h"
#include "escribir.h"
#include "fallo.h"
#include "form2.h"
#include "f5_usdt.h"
#include "form2_pago.h"
#include "mensajes.h"
#include "mesa.h"
#include "prueba.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QLineEdit>
#include <QStyle>
#include <QTableView>
#include <QPushButton>
#include <QRadioButton>

namespace {

// Two rows paid on 11/03/2025 and a third unpaid with a note to search for.
const char* const kFilas = R"(
INSERT INTO bancos VALUES (134, 'BANESCO');
INSERT INTO clientes VALUES (12, 'JOSÉ PEÑA', ''), (13, 'MARIA DIAZ', ''), (14, 'PEDRO PENTON', '');
INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo) VALUES (1, 'ORINOCO', 40, 1.0, 10, 0);
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
    VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364);
INSERT INTO parametros VALUES ('1234', '', '', 40);
INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago, C_BANCO, REFERENCIA,
                         confirmacion, operadora, tipo_operacion, tipo_servicio, ganancia, obs, g1, g2, g3,
                         fecha_pago, hora_pago, dolar1, dolar2, bancozelle) VALUES
 ('20250310', 5, 13, 200, 188.9, 1, 68000, '0134', 'R555', 360, '2', 1, 1, 5.5, '', 10.39, 9, 0.5,
  '20250311', '10:00:00', 398, 405, '3'),
 ('20250310', 6, 12, 10, 10, 1, 3000, '0134', 'X', 300, '1', 2, 1, 2, '', 0.5, 0.4, 0.2, '20250311', '11:30:00', 1, 1, '1'),
 ('20250310', 7, 14, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, 'llamar a Ñico', 10, 10, 0, '', '', 0, 0, '0');
)";

// What the run-time report says when the action fails (the program's top
// level shows it for any failure: tests/app/tst_programa.cpp).
QString reporte(SesionDePrueba& s, const std::function<void()>& accion)
{
    s.mensajes.clear();
    try {
        accion();
    } catch (const FalloEjecucion& f) {
        Mensajes::Reporte_Fallo(f);
    }
    return s.ultimoMensaje();
}

} // namespace

class PruebaConsolasOperador : public QObject {
    Q_OBJECT
private slots:
    // A text longer than its column is cut to it; the largest amounts fit in theirs.
    void textos_y_montos_al_ancho_de_sus_columnas()
    {
        Mesa<Form2> c(QString::fromUtf8(kFilas), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10));
        escribirEnCelda(*c.p->GRID, 2, 11, QString(60, QLatin1Char('R')));
        QCOMPARE(c.celda(2, 11), QString(50, QLatin1Char('R')));
        c.p->ACTUALIZAR->click();
        QCOMPARE(c.bd(QStringLiteral("length(REFERENCIA)"), 7, QStringLiteral("20250310")), QStringLiteral("50"));

        QTableView* v = c.p->GRID->vista();
        const QFontMetrics medida(v->font());
        QVERIFY(medida.height() >= 10); // still letters to read
        const int margen = v->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, v) + 1;
        // Rate, estimate, payment, sent and received, gains.
        for (const auto& [col, monto] : std::vector<std::pair<int, QString>>{{16, "9.999,9999"},
                                                                             {8, "99.999.999,99"},
                                                                             {15, "99.999.999,99"},
                                                                             {4, "99.999,99"},
                                                                             {5, "99.999,99"},
                                                                             {23, "9.999,99"}})
            QVERIFY2(medida.horizontalAdvance(monto) + 2 * margen < v->columnWidth(col), qPrintable(monto));
    }

    // A query that finds nothing leaves an empty grid on each console: every
    // head sorts nothing, and saving, fixing, summing and printing a receipt
    // run over no row without a failure.
    void consolas_sin_filas()
    {
        const auto probar = [](Consola* p, SesionDePrueba& s) {
            QVERIFY(p->Celdas.Vacia());
            QCOMPARE(p->GRID->modelo()->rowCount(), 0);
            for (int col = 0; col < p->GRID->columnas(); ++col)
                emit p->GRID->HeadClick(col);
            p->GRID->setBookmark(0);
            QCOMPARE(p->GRID->Bookmark(), -1);
            // ("Copiar Recibo" before any receipt fails by design: no file to copy.)
            for (QPushButton* b : {p->ACTUALIZAR, p->FIJAR, p->Sumarizar, p->RECIBO_PDF, p->RECIBO_XPS})
                if (b->isEnabled())
                    b->click();
            QVERIFY(p->Celdas.Vacia());
            s.mensajes.clear(); // what a console says of an empty selection is its own matter
        };
        Mesa<Form2> a(QString::fromUtf8(kFilas), "Form2", QDate(2030, 1, 1), QDate(2030, 1, 1));
        probar(a.p, a.s);
        Mesa<Form2_Pago> b(QString::fromUtf8(kFilas), "Form2_Pago", QDate(2030, 1, 1), QDate(2030, 1, 1));
        probar(b.p, b.s);
        Mesa<F5_USDT> c(QString::fromUtf8(kFilas), "F5_USDT", QDate(2030, 1, 1), QDate(2030, 1, 1));
        probar(c.p, c.s);
    }

    // The service list answers the arrow keys as the mouse: each step queries
    // anew. The entry below "TODOS" is service 01, which all three rows have.
    void servicio_con_flechas()
    {
        Mesa<Form2> c(QString::fromUtf8(kFilas), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10));
        Form2* p = c.p;
        p->activateWindow();
        p->Combo1->setFocus();
        const int antes = p->Combo1->currentIndex();
        QTest::keyClick(p->Combo1, Qt::Key_Down);
        QCOMPARE(p->Combo1->currentIndex(), antes + 1);
        QCOMPARE(p->Combo1->currentText().left(2), QStringLiteral("01"));
        QCOMPARE(p->Celdas.filas(), 3);
        c.s.base.sql(QStringLiteral("UPDATE MOVIMIENTOS SET tipo_servicio = 2 WHERE SECUENCIA = 7"));
        QTest::keyClick(p->Combo1, Qt::Key_Up);
        QTest::keyClick(p->Combo1, Qt::Key_Down);
        QCOMPARE(p->Celdas.filas(), 2);
    }

    void busquedas_sin_mayusculas_ni_acentos()
    {
        Mesa<Form2> c(QString::fromUtf8(kFilas), "Form2", QDate(2025, 3, 10), QDate(2025, 3, 10));
        Form2* p = c.p;
        QCOMPARE(p->Celdas.UpperBound(1), 2);
        const auto buscar = [&](const QString& texto) {
            p->Text2->setText(texto);
            QTest::keyClick(p->Text2, Qt::Key_Return);
            QStringList clientes;
            for (int i : p->Celdas.Filas())
                clientes << c.celda(i, 3);
            return clientes;
        };
        QCOMPARE(buscar(QStringLiteral("peña")), QStringList{"JOSÉ PEÑA"});
        QCOMPARE(buscar(QStringLiteral("jose pena")), QStringList{"JOSÉ PEÑA"});
        QCOMPARE(buscar(QStringLiteral("PEN")), (QStringList{"JOSÉ PEÑA", "PEDRO PENTON"}));
        QCOMPARE(buscar(QStringLiteral("ñico")), QStringList{"PEDRO PENTON"}); // in the note
        QCOMPARE(buscar(QStringLiteral("díaz")), QStringList{"MARIA DIAZ"});
        QVERIFY(buscar(QStringLiteral("peñb")).isEmpty());
    }

    void reporte_de_fallos_en_castellano()
    {
        Mesa<Form2_Pago> c(QString::fromUtf8(kFilas), "Form2_Pago", QDate(2025, 3, 11), QDate(2025, 3, 11));
        // An amount that is no number, and a service code beyond the services' table.
        QCOMPARE(reporte(c.s, [&] { c.escribir(0, 5, QStringLiteral("abc")); }),
                 QStringLiteral("Se ha producido el error '13' en tiempo de ejecución:\n\nNo coinciden los tipos"));
        QCOMPARE(reporte(c.s, [&] { c.escribir(0, 18, QStringLiteral("150")); }),
                 QStringLiteral("Se ha producido el error '9' en tiempo de ejecución:\n\nSubíndice fuera del intervalo"));

        // A picture file that is gone by the time it is opened.
        auto* p = c.s.abrir<Clientes>(QStringLiteral("Clientes"));
        p->GRID->setBookmark(0);
        emit p->GRID->Click();
        const QString ruta = c.s.base.carpeta() + QStringLiteral("/no está.png");
        p->Dialogo_ShowOpen = [&] { return ruta; };
        QCOMPARE(reporte(c.s, [&] { p->FOTO->click(); }),
                 QStringLiteral("Se ha producido el error '53' en tiempo de ejecución:\n\nNo se ha encontrado el archivo: ") +
                     ruta);
        // A refusal of the server keeps the server's own words.
        const auto rechazo = [&] { c.s.m->Conexion.Execute(QStringLiteral("UPDATE tabla_que_no_existe SET x = 1")); };
        QString delServidor;
        try {
            rechazo();
        } catch (const FalloEjecucion& f) {
            delServidor = f.texto();
        }
        QVERIFY(!delServidor.isEmpty() && delServidor != FalloEjecucion::Texto(0));
        QVERIFY(reporte(c.s, rechazo).endsWith(QStringLiteral("\n\n") + delServidor));
    }
};

REGISTRAR_PRUEBA(PruebaConsolasOperador);
#include "tst_operador.moc"
