#pragma once
// A month whose figures are known, for the chart's and the report's tests,
// and a statistics screen opened over it.
//
// March 2025 (the 1st a Saturday), service 1 TRUMIN, 2 ZELLE, 3 ZINLI:
//   03 (Mon) ten rows, provider k with 100 x k, service 1 when k is odd and 2
//            when even, operator 1 up to k = 5 and 2 after, gain k: 5.500, gain 55
//   08 (Sat) provider 1, 50 by direct transfer, ZINLI, operator 1, gain 5
//   31 (Mon) provider 2, 250 by direct transfer, ZELLE, operator 2, gain -3
// So the month received 5.800, 300 of it direct, and gained 57; providers
// 10, 9, ... 5 hold 1.000 down to 500, provider 2 450, provider 4 400,
// provider 3 300 and provider 1 150.
#include "login.h"
#include "sesion.h"

#include <QLineEdit>
#include <QPushButton>

inline QString datosConocidos()
{
    QString sql = QStringLiteral(
        "INSERT INTO bancos VALUES (134, 'BANESCO');"
        "INSERT INTO clientes VALUES (12, 'MARIA PEREZ', '');"
        "INSERT INTO servicios (C_SERVIcio, D_SERVIcio, porcentaje, decimales, sw_calculos, letra, MONTO) VALUES "
        "(1, 'TRUMIN', 9, 2, 1, 'T', 364), (2, 'ZELLE', 6, 2, 1, 'Z', 370), (3, 'ZINLI', 6, 2, 1, 'I', 370),"
        "(50, 'USDT BINANCE', 0, 2, 2, 'U', 0);"
        "INSERT INTO parametros VALUES ('1234', '', '', 400);");
    for (int k = 1; k <= 10; ++k)
        sql += QStringLiteral("INSERT INTO proveedor (C_proveedor, D_proveedor, porgan, Comision, regalo, ultregalo) "
                              "VALUES (%1, 'PROV %2', 30, 1.0, 0, 0);")
                   .arg(k)
                   .arg(k, 2, 10, QLatin1Char('0'));
    const QString movimiento =
        QStringLiteral("INSERT INTO MOVIMIENTOS (FECHA, SECUENCIA, C_CLIENTE, enviado, recibido, C_PROVEEDOR, C_BANCO, "
                       "operadora, tipo_operacion, tipo_servicio, g2) VALUES ('%1', %2, 12, %3, %3, %4, '0134', '%5', %6, %7, %8);");
    for (int k = 1; k <= 10; ++k)
        sql += movimiento.arg(QStringLiteral("20250303")).arg(k).arg(100 * k).arg(k).arg(k <= 5 ? 1 : 2).arg(2).arg(k % 2 ? 1 : 2).arg(k);
    sql += movimiento.arg(QStringLiteral("20250308")).arg(1).arg(50).arg(1).arg(1).arg(3).arg(3).arg(5);
    sql += movimiento.arg(QStringLiteral("20250331")).arg(1).arg(250).arg(2).arg(2).arg(3).arg(2).arg(-3);
    return sql;
}

// A screen opened over the known month (and what a test adds).
template <class T> struct Estadistica {
    SesionDePrueba s {false};
    T* p = nullptr;

    explicit Estadistica(const char* nombre, const QString& mas = QString())
    {
        s.base.sql(datosConocidos() + mas);
        LOGIN::Carga_Parametros(*s.m);
        p = s.abrir<T>(QString::fromLatin1(nombre));
    }
    void cargar(const QString& ano = QStringLiteral("2025"), const QString& mes = QStringLiteral("03"))
    {
        p->Text1[T::txtAno]->setText(ano);
        p->Text1[T::txtMes]->setText(mes);
        p->CARGA_DATOS->click();
    }
};
