#pragma once
// A console on crafted rows: a session without demo data, the rows laid out,
// the parameters read, the screen opened and queried over a range of days.
#include "login.h"
#include "sesion.h"

#include <QDateEdit>
#include <QPushButton>
#include <QTableView>

template <class T>
struct Mesa {
    SesionDePrueba s{false};
    T* p = nullptr;

    Mesa(const QString& filas, const char* nombre, QDate desde, QDate hasta)
    {
        s.base.sql(filas);
        LOGIN::Carga_Parametros(*s.m); // the screen's first activation reads the new rates
        p = s.abrir<T>(QString::fromLatin1(nombre));
        consultar(desde, hasta);
    }
    void consultar(QDate desde, QDate hasta)
    {
        p->Fecha1->setDate(desde);
        p->Fecha2->setDate(hasta);
        p->SELECCIONA->click();
    }
    QString celda(int fila, int col) const { return p->Celdas.Value(fila, col).texto(); }
    QString pie(int col) const { return p->GRID->Columns(col).FooterText(); }
    // Several cells of one row, or several footers, to compare at once.
    QStringList fila(int f, std::initializer_list<int> cols) const
    {
        QStringList r;
        for (int k : cols)
            r << celda(f, k);
        return r;
    }
    QStringList pies(std::initializer_list<int> cols) const
    {
        QStringList r;
        for (int k : cols)
            r << pie(k);
        return r;
    }
    // The operator types a text into a cell and leaves it.
    void escribir(int fila, int col, const QString& texto)
    {
        const QModelIndex i = p->GRID->modelo()->index(fila, col);
        p->GRID->vista()->setCurrentIndex(i);
        p->GRID->modelo()->setData(i, texto, Qt::EditRole);
    }
    // Columns of a stored row, read straight from the file.
    QString bd(const QString& columnas, int secuencia, const QString& fecha) const
    {
        return s.base.valor(QStringLiteral("select %1 from MOVIMIENTOS where FECHA='%2' and SECUENCIA=%3")
                                .arg(columnas, fecha)
                                .arg(secuencia));
    }
};
