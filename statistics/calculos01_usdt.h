#pragma once
// "ESTADISTICAS USDT" and "RESUMEN MENSUAL USDT": the daily statistics and the
// monthly summary of the USDT services (codes 50 to 99), where the money is
// what the client sent: "Enviado" for "Recibido", no count of transactions by
// client, no header sort, the services of Combo1 from 50 to 99. Their menu
// entries stand hidden and disabled until the business switches them on.
#include "calculos01.h"
#include "resumen_mensual.h"

class CALCULOS01_USDT : public CALCULOS01 {
    Q_OBJECT
public:
    CALCULOS01_USDT(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    bool Es_Usdt() const override { return true; }

    // What the two USDT screens change in the grids' columns and in Combo1;
    // anchoCliente is the width of GRID2's name column.
    static void Columnas_Usdt(CALCULOS01& p, int anchoCliente);
    static void Combo_Usdt(Module1& m, QComboBox* Combo1);

protected:
    QString Procedimiento() const override { return QStringLiteral("TRU_NewCalk_02_USDT"); }
    void Llena_Combo() override { Combo_Usdt(m, Combo1); }
    void Retoca_Columnas() override { Columnas_Usdt(*this, 3500); }
    bool Con_Cuantos() const override { return false; }
    // It reads the first set to its end instead of asking its count, and
    // leaves the mouse pointer as it is.
    bool Con_Reloj() const override { return false; }
    bool Cuenta_Filas() const override { return false; }
    bool Ordena_GRID() const override { return false; }
    bool Ordena_GRID2() const override { return false; }
};

class RESUMEN_MENSUAL_USDT : public Resumen_mensual {
    Q_OBJECT
public:
    RESUMEN_MENSUAL_USDT(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    bool Es_Usdt() const override { return true; }

protected:
    QString Procedimiento() const override { return QStringLiteral("TRU_NewCalk_03_USDT"); }
    QString Campo_Clave() const override { return QStringLiteral("fech"); }
    // No period is sent: the server gives the months.
    void Ejecuta_Procedimiento() override;
    // The one screen that guards the division: no dollars, no percentage.
    void Porcentaje_Del_Ano() override;
    void Llena_Combo() override { CALCULOS01_USDT::Combo_Usdt(m, Combo1); }
    void Retoca_Columnas() override;
    bool Con_Cuantos() const override { return false; }
    bool Cuenta_Filas() const override { return false; }
    bool Ordena_GRID2() const override { return false; }
};
