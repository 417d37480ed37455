#pragma once
// "ESTADISTICAS MENSUALES": a whole year month by month, in the five grids and
// with the filters of the daily statistics. The rows of GRID are the months
// that the server lists first (yyyymm); the figures of each month go to the
// row whose hidden key column holds it. The year is the only input: the
// month, the average and the balance are filled but not shown.
#include "calculos01.h"

#include <cstdint>

class Resumen_mensual : public CALCULOS01 {
    Q_OBJECT
public:
    Resumen_mensual(Module1& m, MDIForm1& principal, const QString& nombre = QStringLiteral("Resumen_mensual"));

    void Carga_Estadistica() override;
    bool Por_Meses() const override { return true; }
    // The row of GRID whose key column holds the text, into Fila; with no
    // match Fila keeps the row found last. Counts with the shared Cuenta.
    void Busca_Fila(const QString& clave);

    int16_t Fila = 0;
    double Total_Fijo = 0; // the received total, kept when Total_Recibido turns to the directs

protected:
    QString Procedimiento() const override { return QStringLiteral("TRU_NewCalk_03_250320"); }
    // The months of the first set as the rows of GRID, read from the open result.
    void Prepara_Grid() override;
    void Retoca_Columnas() override;
    bool Ordena_GRID() const override { return false; }
    // The name of the key set's column.
    virtual QString Campo_Clave() const { return QStringLiteral("Fecha"); }
    // The parameters before the operator and the service: the year.
    virtual void Ejecuta_Procedimiento();
    // Porc_Gan from the totals of the second set.
    virtual void Porcentaje_Del_Ano();
};
