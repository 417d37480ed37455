#pragma once
// "CONSULTAS POR FECHA DE PAGO" (F7): the console whose dates are those of the
// payment, with a shorter grid (colFecha to colG3). colEstimado shows the date
// and hour of payment instead of the estimate (colFechaHoraPago); colMarca,
// the row-changed mark, is loaded with the row's Zelle bank (colZelle), so a row whose bancozelle is 1 is saved
// by the next ACTUALIZAR as if edited. The save has one form (no payment
// moment, no gift, no bancozelle), FIJAR prices every unpaid row without
// ticks, "8888" touches no provider, and a double click deletes nothing.
#include "consola.h"

class Form2_Pago : public Consola {
    Q_OBJECT
public:
    Form2_Pago(Module1& m, MDIForm1& principal);

    // The columns this console gives another use, and its last one.
    enum ColPago : int { colFechaHoraPago = colEstimado, colZelle = colMarca, colUltimaPago = colG3 };

    void GRID_DblClick() override {}
    void FIJAR_Click() override { Fijar_Sin_Marcas(); }

    // colFechaHoraPago of a row: the payment's date and hour, a blank for a row never paid.
    static QString Fecha_Y_Hora(const QString& fecha_pago, const QString& hora_pago);

protected:
    std::vector<DefColumna> Columnas() const override;
    std::vector<std::pair<int, int>> Movidas() const override;
    std::vector<int> Ocultas() const override { return {colSel, colG2Oculta}; }
    QString Procedimiento() const override { return QStringLiteral("TRU_CONSULTA_PAGO_250320"); }
    void Llena_Fila(int fila) override;
    void Escribe_Pies() override;
    void Actualiza_Regalo() override {}
    void Banco_Reverso(int fila) override;
    void Servicio_Editado(int fila) override;
    QString Asignaciones_Ganancia(int fila, const QString&, const QString&) override { return Asignaciones_G(fila); }
};
