#pragma once
// A screen on crafted rows: a session without demo data, the rows laid out,
// the parameters read, the screen opened; what a test reads of its grids and
// of the database. A console is queried over a range of days, a statistics
// screen loaded by year and month.
#include "celdas.h"
#include "login.h"
#include "rejilla.h"
#include "sesion.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

template <class T> struct Mesa {
    SesionDePrueba s {false};
    T* p = nullptr;

    Mesa(const QString& filas, const char* nombre)
    {
        s.base.sql(filas);
        LOGIN::Carga_Parametros(*s.m); // the screen's first activation reads the new rates
        p = s.abrir<T>(QString::fromLatin1(nombre));
    }
    Mesa(const QString& filas, const char* nombre, QDate desde, QDate hasta) : Mesa(filas, nombre) { consultar(desde, hasta); }
    // A console's query of a range of days.
    void consultar(QDate desde, QDate hasta) { consultar(p, desde, hasta); }
    static void consultar(T* consola, QDate desde, QDate hasta)
    {
        consola->Fecha1->setDate(desde);
        consola->Fecha2->setDate(hasta);
        consola->SELECCIONA->click();
    }
    // Several cells of one row, one column of every row, several footers.
    static QStringList fila(const Celdas& c, int f, std::initializer_list<int> cols)
    {
        QStringList r;
        for (int k : cols)
            r << c.Value(f, k).texto();
        return r;
    }
    static QStringList columna(const Celdas& c, int col)
    {
        QStringList r;
        for (int f = 0; f < c.filas(); ++f)
            r << c.Value(f, col).texto();
        return r;
    }
    static QStringList pies(Rejilla* g, std::initializer_list<int> cols)
    {
        QStringList r;
        for (int k : cols)
            r << g->Columns(k).FooterText();
        return r;
    }
    // The same of the screen's own matrix and grid.
    QString celda(int f, int col) const { return p->Celdas.Value(f, col).texto(); }
    QStringList fila(int f, std::initializer_list<int> cols) const { return fila(p->Celdas, f, cols); }
    QStringList columna(int col) const { return columna(p->Celdas, col); }
    QString pie(int col) const { return p->GRID->Columns(col).FooterText(); }
    QStringList pies(std::initializer_list<int> cols) const { return pies(p->GRID, cols); }
    // The row of a console that shows a transaction of the day, by its sequence; -1 for none.
    static int filaDe(const T* consola, int secuencia)
    {
        for (int i : consola->Celdas.Filas())
            if (consola->Celdas.Value(i, T::colSec).texto().toInt() == secuencia)
                return i;
        return -1;
    }

    // The operator types a text into a cell and leaves it.
    void escribir(int fila, int col, const QString& texto)
    {
        const QModelIndex i = p->GRID->modelo()->index(fila, col);
        p->GRID->vista()->setCurrentIndex(i);
        p->GRID->modelo()->setData(i, texto, Qt::EditRole);
    }
    // Stored columns of a transaction, read straight from the file, joined by
    // "|": bd({"pago", "C_BANCO"}, 5, "20250310") is "68000.0|0134".
    QString bd(const QStringList& columnas, int secuencia, const QString& fecha) const
    {
        return bd(s.base, columnas, secuencia, fecha);
    }
    static QString bd(const BaseTemporal& base, const QStringList& columnas, int secuencia, const QString& fecha)
    {
        return base.valor(QStringLiteral("select %1 from MOVIMIENTOS where FECHA='%2' and SECUENCIA=%3")
                              .arg(columnas.join(QStringLiteral(" || '|' || ")), fecha)
                              .arg(secuencia));
    }
};

// What the consoles' tests share: banks, clients, a concept, providers 1 and 2
// with their commissions and gifts, the rates of services 1 (TRUMIN), 5, 55
// (pesos, in dollars through rate 4) and 60 (USDT), the day's dollar at 40;
// then the transactions given, each with every column a console reads.
inline QString conReferencia(const char* movimientos)
{
    return QStringLiteral(R"(
INSERT INTO bancos VALUES (102, 'BANCO DE VENEZUELA'), (134, 'BANESCO');
INSERT INTO clientes VALUES (12, 'MARIA PEREZ', ''), (13, 'JOSE DIAZ', ''), (14, 'JOSÉ PEÑA', ''),
    (15, 'PEDRO PENTON', '');
INSERT INTO conceptos VALUES (2, 'AYUDA FAMILIAR');
INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo)
    VALUES (1, 'ORINOCO', 40, 1.0, 10, 0), (2, 'LLANO', 30, 2.0, 7.5, 0);
INSERT INTO servicios_usdt (C_SERVIcio, D_SERVIcio, compra, venta, equivalencia, div)
    VALUES (1, 'DOLAR', 400, 0, 0, 0), (2, 'BASE', 410, 0, 0, 0), (4, 'PESOS', 4000, 0, 55, 1);
INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO)
    VALUES (1, 'TRUMIN', 9, 2, 1, 'T', 364), (5, 'BANESCO PANAMA EXPRESS', 5, 2, 1, 'N', 380),
           (55, 'PESOS COLOMBIA', 5, 4, 2, 'M', 0.0975), (60, 'USDT BINANCE PAY', 0, 2, 1, 'U', 41.5);
INSERT INTO parametros VALUES ('1234', '', '', 40);
INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, pago, C_BANCO, REFERENCIA,
                         confirmacion, operadora, tipo_operacion, tipo_servicio, ganancia, obs, g1, g2, g3,
                         fecha_pago, hora_pago, dolar1, dolar2, bancozelle) VALUES)") +
           QString::fromUtf8(movimientos) + QLatin1Char(';');
}

// Six rows of 10/03/2025, two of 09/03/2025 and one of 2024, each with something to show:
//  1 unpaid TRUMIN (estimate from what was received, cut to whole bolivars)
//  2 unpaid BANESCO PANAMA (from what was sent, cut)
//  3 unpaid PESOS COLOMBIA (service 55: decimals kept, received recalculated)
//  4 returned to the client (7777)
//  5 paid by BANESCO, provider 2 with a commission of 2 %
//  6 paid with a one-character bank code
// and on 09/03 two clients with accents and a note to search for.
inline const char* const kDiezDeMarzo = R"(
 ('20250310', 1, 12, 100, 94.3, 0, 0, '', '', 0, '1', 2, 1, 100, '', 94.3, 94.3, 0, '', '', 0, 0, '0'),
 ('20250310', 2, 13, 20.5, 20.5, 0, 0, '', '', 0, '2', 2, 5, 100, 'URGENTE', 20.5, 20.5, 0, '', '', 0, 0, '0'),
 ('20250310', 3, 12, 123450, 30, 0, 0, '', '', 0, '1', 2, 55, 100, '', 30, 30, 0, '', '', 0, 0, '0'),
 ('20250310', 4, 12, 20, 18.62, 0, 5000, '7777', '', 350, '1', 2, 1, 3, '', 1, 1, 0, '', '', 0, 0, '0'),
 ('20250310', 5, 13, 200, 188.9, 2, 68000, '0134', 'R555', 360, '2', 1, 1, 5.5, '', 10.39, 10.39, 0,
  '20250311', '10:00:00', 398, 405, '3'),
 ('20250310', 6, 12, 10, 10, 1, 3000, '5', 'X', 300, '1', 2, 1, 2, '', 0.5, 0.5, 0.2, '20250311', '11:00:00', 1, 1, '0'),
 ('20250309', 1, 14, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0'),
 ('20250309', 2, 15, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, 'llamar a Ñico', 10, 10, 0, '', '', 0, 0, '0'),
 ('20240105', 1, 12, 10, 10, 0, 0, '', '', 0, '1', 2, 1, 100, '', 10, 10, 0, '', '', 0, 0, '0')
)";
