#pragma once
// "CONSULTAS USDT": the console of the USDT transactions (services from 50),
// with a grid of columns colFecha to colNota. The client's name comes from the
// cache, colFactor is the "Moneda" price (colMoneda), colG2 the gain in
// dollars (colGanancia), and the gain is how far that price lies
// from the day's dollar (Dolar_Param): a stored gain of 0 counts as 100, and
// the footer shows the percentage weighted by what was received. Its save
// carries no g1 to g3, payment moment or gift. Its menu entry stands hidden
// and disabled until the business switches it on.
#include "consola.h"

class F5_USDT : public Consola {
    Q_OBJECT
public:
    F5_USDT(Module1& m, MDIForm1& principal);

    // The columns this console gives another use, and its last one.
    enum ColUsdt : int { colMoneda = colFactor, colGanancia = colG2, colUltimaUsdt = colNota };

    void Form_Load() override;
    void FIJAR_Click() override { Fijar_Sin_Marcas(); }
    // Monto is the row's "Moneda" price, taken as a single; the service plays no part.
    void CALCULA_PORCENTAJE(double& Monto, int16_t& Servicio) override;

    // The gain of the last loaded row, and of the whole query (returned rows left out).
    double Ganancia_Fila = 0;
    double Total_Ganancia = 0;

protected:
    std::vector<DefColumna> Columnas() const override;
    std::vector<std::pair<int, int>> Movidas() const override;
    std::vector<int> Ocultas() const override { return {colBanco, colMarca, colNota}; }
    QString Procedimiento() const override { return QStringLiteral("TRU_CONSULTA_USDT"); }
    void Prepara_Campos() override;
    void Llena_Fila(int fila) override;
    void Escribe_Pies() override;
    void Actualiza_Regalo() override {}
    void Banco_Reverso(int fila) override;
    void Banco_Pago(int fila, const QString& codigo) override;
    QString Formato_Suma() const override { return QStringLiteral("###,##0.00"); }
    QString Asignaciones_Ganancia(int, const QString&, const QString&) override { return {}; }
    // The "Moneda" of the row through CALCULA_PORCENTAJE into colPorcentaje; colGanancia is left.
    void Ganancia_Del_Pago(int fila) override;
};
