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
    // A statistics screen's load of a year and a month.
    void cargar(const QString& ano, const QString& mes)
    {
        p->Text1[T::txtAno]->setText(ano);
        p->Text1[T::txtMes]->setText(mes);
        p->CARGA_DATOS->click();
    }
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
