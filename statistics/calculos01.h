#pragma once
// "ESTADISTICAS": the figures of one month, day by day, in five grids: the
// calendar of the month with what was received, the direct transfers, the
// transactions, the gain and its percentage; and the same money by provider,
// client, bank and service, each with its share of the month's total. The
// server groups (one procedure, six result sets); the screen places the rows,
// adds them up, derives the shares and formats. It never writes anything.
//
// The monthly summary and the two USDT screens are this screen with a few
// differences: they override the hooks below and keep everything else.
#include "celdas.h"
#include "pantalla.h"
#include "rejilla.h"

#include <QHash>
#include <QString>
#include <array>
#include <functional>
#include <initializer_list>

class QAction;
class QComboBox;
class QFrame;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

class CALCULOS01 : public Pantalla {
    Q_OBJECT
public:
    CALCULOS01(Module1& m, MDIForm1& principal, const QString& nombre = QStringLiteral("CALCULOS01"));

    void Form_Load() override;
    void Form_Activate() override;

    // ---- named indexes
    // The elements of Text1, captions among the fields. The monthly summary
    // fills the month, the average and the balance without showing them.
    enum Campo : int {
        rotAno = 0,
        txtAno,
        rotMes,
        txtMes,
        rotPromedio,
        txtPromedio,
        txtBalance, // what was received and did not come as a direct transfer
        rotBalance,
    };
    // The operator boxes of Option2 and the service boxes of Option3: the
    // index of the box goes to the server.
    enum Operadora : int { opTodas = 0, opRamil, opNoelina };
    enum TipoServicio : int { srvTodos = 0, srvTrum, srvZelle, srvZinli, srvAmaz };
    // The columns of GRID, a row a day. In the monthly summary a row is a
    // month: colDia shows it ("2025-03") and colSemana, hidden, holds its key
    // (202503). On the USDT screens colRecibido is what the client sent.
    enum ColumnaDia : int { colDia = 0, colSemana, colRecibido, colDirectos, colTotM, colPorc, colTotG };
    // The columns of GRID1, GRID2, GRID4 and GRID5, a row a provider, client,
    // bank or service: its code, its name, its money and its share of the
    // month's total; GRID2 alone has the count of transactions (grpCuantos).
    enum ColumnaGrupo : int { grpCodigo = 0, grpNombre, grpRecibido, grpPorcentaje, grpCuantos };

    // ---- controls, by their design names
    std::array<QLineEdit*, 8> Text1;
    QTabWidget* SSTab1;
    QFrame* Line1;
    QFrame* Line2;
    QPushButton* CARGA_DATOS;
    QPushButton* SALIR;
    QGroupBox* Frame2;
    QGroupBox* Frame3;
    std::array<QRadioButton*, 3> Option2; // operator: the index goes to the server
    std::array<QRadioButton*, 5> Option3; // service: the index goes to the server
    QComboBox* Combo1;                    // service by code, "00" all, "98"/"99" by sw_calculos
    QLabel* Label1;
    Rejilla* GRID;  // by day (monthly: by month)
    Rejilla* GRID1; // by provider
    Rejilla* GRID2; // by client
    Rejilla* GRID4; // by bank
    Rejilla* GRID5; // by service
    ::Celdas Celdas, Celdas1, Celdas2, Celdas4, Celdas5;

    // ---- state of the screen, kept between loads
    bool Cargado = false;
    double Total_Recibido = 0; // total of the first set: the denominator of every share
    double Total_Tot_M = 0;
    double Total_Gan = 0;
    double Porc_Gan = 0;
    double Suma_Grid = 0;
    double Total_Cuantos = 0;
    QString Fecha_Fila;

    // ---- operations
    // Runs the procedure with the filters as they stand and fills the grids.
    virtual void Carga_Estadistica();
    void Option2_Click(int indice);
    void Option3_Click(int indice);
    void Combo1_Click();
    void GRID_HeadClick(int col);
    void GRID2_HeadClick(int col);

    // ---- what the chart, the printed report and the export read
    // The rows of GRID are months (the summaries), and the money is USDT.
    virtual bool Por_Meses() const { return false; }
    virtual bool Es_Usdt() const { return false; }
    // The period shown, in words ("Marzo 2025", "Año 2025") and for a
    // file's name ("2025-03", "2025"); the daily screens take it from the
    // boxes, the summaries from the months of GRID.
    QString Periodo() const;
    QString Periodo_Archivo() const;
    // The filters of the figures shown: "Operadora: Todas — Servicio: Todos".
    QString Filtros() const;
    // The service last chosen, by a box of Option3 or by Combo1.
    QString Servicio_Elegido = QStringLiteral("Todos");
    // "Gráfico..." (Ctrl+G) and "Imprimir informe..." (Ctrl+P), on the
    // context menu of the five grids.
    QAction* Accion_Grafico = nullptr;
    QAction* Accion_Informe = nullptr;
    void Abre_Grafico();
    void Abre_Informe();

signals:
    // A load has ended: the chart of the screen draws the figures again.
    void Cargada();

protected:
    // ---- what the other screens redefine
    virtual QString Procedimiento() const { return QStringLiteral("TRU_NewCalk_02_250320"); }
    virtual void Llena_Combo();
    // GRID laid out and, here, seeded with the days of the month; then the
    // other four grids. Each grid's matrix is emptied and bound.
    virtual void Prepara_Grid();
    // After the layout of all five grids: captions and widths of a variant.
    virtual void Retoca_Columnas() {}
    virtual bool Con_Cuantos() const { return true; }  // GRID2 has grpCuantos
    virtual bool Con_Reloj() const { return true; }    // hourglass during the load
    virtual bool Cuenta_Filas() const { return true; } // asks the first set's record count
    virtual bool Ordena_GRID() const { return true; }
    virtual bool Ordena_GRID2() const { return true; }
    // Cell pattern of colTotG, footer pattern of colPorc, share pattern of GRID5.
    QString Formato_Gan = QStringLiteral("#,##0.00");
    QString Formato_Pie_Porc = QStringLiteral("###,##0.00");
    QString Formato_Porc_Servicio = QStringLiteral("###,##0.00");

    // ---- pieces that the variants share
    struct DefColumna {
        const char* titulo;
        int ancho; // twips
        Alineacion alineacion;
    };
    // Lays out the grid's columns, empties the matrix and binds it.
    static void Disponer(Rejilla* grid, ::Celdas& celdas, std::initializer_list<DefColumna> columnas);
    void Prepara_Grid1();
    void Prepara_Grid2();
    void Prepara_Grid4();
    void Prepara_Grid5();
    // Blanks the footers of the first four columns of GRID, GRID1, GRID2 and GRID4.
    void Blanquea_Pies();
    // Cierra_Rs, then the procedure with the values given, into Rs.
    void Ejecuta(std::initializer_list<Valor> valores);
    // Received, transactions, % and gain of a row of GRID from the current
    // record, added to the totals.
    void Escribe_Dia(int fila);
    // The footers of those four columns of GRID.
    void Pies_Del_Mes();
    // A set by code into its grid, rows in arrival order: the code, its name,
    // Suma and its share of `total`; with `cuantos` also the count. The footer
    // of the code counts the rows when `conteo`; the money's has Suma_Grid.
    void Lee_Grupo(Rejilla* grid, ::Celdas& celdas, const QString& campo, const QString& formatoCodigo,
                   const std::function<QString(const Valor&)>& nombre, double total, const QString& formatoPorc, bool conteo,
                   bool cuantos);
    void Lee_Proveedores(double total);
    void Lee_Clientes(double total);
    void Lee_Bancos(double total);
    void Lee_Servicios(double total);
    // Cierra_Rs, every grid bound anew, the hourglass off.
    void Termina();
    // The hourglass on and the totals of the last load back to zero, with the
    // balance emptied; the average stays until a month with data replaces it.
    void Empieza();
    // (Suma x 100) / total when Suma > 0, else 0.
    static double Porcion(double suma, double total);
    // A division of the run-time: by zero it stops the load.
    static double Divide(double a, double b);

private:
    // The actions of the grids' context menu and the names of an export.
    void Prepara_Herramientas();
    // The clients' names by code, taken from the cache once per load: a year
    // may list thousands of clients, and Nombre_Cliente searches the cache
    // from the top for each one. `completo` tells whether the index holds
    // every row of the cache, so that a code not in it is a code unknown.
    QHash<int, QString> Indice_Clientes(bool& completo) const;
    void Ordena(Rejilla* grid, ::Celdas& celdas, int col, Celdas::Clave clave, Celdas::Orden orden);
};
