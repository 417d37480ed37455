#pragma once
// The transaction console: the transactions of a date range in one grid, where
// the operators correct them, pay them one by one with a bank code or in a
// batch through the payment dialog, take them back to unpaid, return them to
// the client, and delete the unpaid ones. Edits live in the cell matrix until
// ACTUALIZAR (or a payment run) sends them as one batch of UPDATE statements.
//
// This class is the console by date of transaction as a whole. The console by
// date of payment and the USDT console are variants of it: they override the
// protected hooks below (the grid's columns, the query, how a record fills a
// row, the footers, the statement of a saved row, the gift update, the rules
// of a typed bank code, the gain, FIJAR, the payment run, the double click) and
// keep everything else.
//
// The columns of the matrix are named by Consola::Col; a bank code "7777"
// marks a row returned to the client, "8888" typed in the bank takes a paid
// row back to unpaid.
#include "celdas.h"
#include "conexion.h"
#include "formato.h"
#include "pantalla.h"
#include "recibo.h"
#include "rejilla.h"

#include <QFont>
#include <QHash>
#include <QString>
#include <array>
#include <functional>
#include <cstdint>
#include <vector>

class FalloFilasCambiadas;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

class Consola : public Pantalla {
    Q_OBJECT
public:
    // nombre: the screen's design name; titulo: its caption.
    Consola(Module1& m, MDIForm1& principal, const QString& nombre, const QString& titulo);

    void Form_Load() override;
    void Form_Activate() override;

    // The columns of the cell matrix, as the console by date has them (0 to
    // 31). The variants keep the positions and the meaning of most of them;
    // where one gives a column another use it names it its own way
    // (Form2_Pago: colEstimado holds the moment of payment, colMarca the
    // Zelle bank; F5_USDT: colFactor is "Moneda", colG2 the gain " G").
    enum Col : int {
        colFecha = 0,
        colSec,
        colCodCliente, // "C-C"
        colCliente,
        colEnvio,
        colRecibido,
        colCodProveedor, // "C-P"
        colProveedor,
        colEstimado, // the estimate of an unpaid row, in bolivars
        colCodBanco, // "C-B": the bank code that pays, returns or takes back a row
        colBanco,
        colReferencia,
        colMarca,       // "M", hidden: "1" marks a row for the next save
        colOperadora,   // "Op"
        colTipoOp,      // "T": the kind of operation
        colPagado,      // the payment of a paid row
        colFactor,      // the rate: bolivars a dollar
        colSel,         // -1 ticked
        colCodServicio, // "T-S"
        colServicio,
        colPorcentaje, // " %": the gain, in percent
        colG2,         // " G2": the gain, in dollars
        colNota,
        colG1,        // "G-1"
        colG2Oculta,  // "G-2", hidden
        colG3,        // "G-3": the provider's share of the gain
        colFechaPago, // "Fecha_P"
        colHoraPago,  // "Hora_P"
        colRegalo,    // the provider's gift on the row
        colDolar1,
        colDolar2,
        colBancoZelle, // "Ze"
        colUltima = colBancoZelle,
    };
    // The radio buttons of Option1 ("Seleccionar") and Option2 ("Operadora");
    // the index is what the query receives.
    enum Seleccion : int { selTodos = 0, selPagados, selNoPagados };
    enum Operadora : int { opTodas = 0, opRamil, opNoelina };

    // ---- controls, by their design names
    QDateEdit* Fecha1;
    QDateEdit* Fecha2;
    QComboBox* Combo1;                    // service filter
    std::array<QRadioButton*, 3> Option1; // "Seleccionar", by Seleccion
    std::array<QRadioButton*, 3> Option2; // "Operadora", by Operadora
    std::array<QRadioButton*, 5> Option3; // "Tipo de Servicio": read by nobody
    QLineEdit* Text2;                     // free filters, Enter queries
    QLineEdit* Text3;
    QLineEdit* Text4; // the price FIJAR sets
    QLineEdit* Text5; // running sum of the ticked rows
    QLineEdit* Text6; // receipt: concept code
    QLineEdit* Text7; // receipt: passing notice
    QLineEdit* Text8; // dollar prices of the moment
    QLineEdit* Text9;
    QLabel* Label1;    // the services' rates of the moment
    QCheckBox* Check1; // "Tabla": opens the concepts
    QCheckBox* Check2; // a search by Text2 runs over everything since January 2023
    QPushButton* SELECCIONA;
    QPushButton* ACTUALIZAR;
    QPushButton* FIJAR;
    QPushButton* Sumarizar;
    QPushButton* RECIBO_PDF;
    QPushButton* RECIBO_XPS;
    QPushButton* COPIAR;
    QPushButton* SALIR;
    Rejilla* GRID;
    ::Celdas Celdas;

    // ---- state of the screen
    int16_t Cargado = 0;
    int16_t Modo_Grabar = 0; // 0 a plain save, 1 the save of a payment run
    int32_t Suma_Sel = 0;
    double Total_Enviado = 0, Total_Recibido = 0, Total_Estimado = 0, Total_Pagado = 0;
    double Total_G1 = 0, Total_G2 = 0, Total_G3 = 0;
    int32_t Total_Filas = 0;
    // working fields of the edits and the save, kept between events
    QString Monto_Texto;
    double Monto_Calc = 0;
    int16_t Tipo_Serv = 0;
    float Porcentaje = 0;
    double Regalo_Row = 0;
    double Suma_Recibido = 0;
    int16_t Prov_Pago = 0;

    // ---- operations
    void ARMAR_GRID();
    // The grid's letters: see Elige_Letra.
    static std::vector<std::pair<int, QString>> Montos_Mayores();
    bool Caben_Montos(const QFont& letra) const;
    void Elige_Letra();
    void CONSULTAR();
    void GRID_AfterColEdit(int col);
    void GRID_HeadClick(int col);
    virtual void GRID_DblClick();
    void ACTUALIZAR_Click();
    void GRABAR_MOVIMIENTOS();
    void BORRAR_MOVIMIENTO();
    virtual void FIJAR_Click();
    void Sumarizar_Click();
    virtual void APLICAR_PAGO();
    void Check1_Click();
    // ---- the receipt of one ticked, paid row
    Recibo recibo;
    void Text6_Enter();
    void Text6_LostFocus();
    void RECIBO_PDF_Click();
    void RECIBO_XPS_Click();
    void PREPARAR_RECIBO();
    void COPIAR_Click();
    void SELECCIONA_Click();
    // The share of the dollars received left after buying the bolivars paid
    // (Monto) at the purchase price; reads colRecibido of row I. Into Porcentaje.
    virtual void CALCULA_PORCENTAJE(double& Monto, int16_t& Servicio);
    // Ticks or unticks a row's "Sel", as a click on its cell does.
    void Marcar(int fila);
    // The UPDATE statement of a marked row, in the form of the current
    // Modo_Grabar; Hoy and Ahora are the moment of a payment run.
    virtual QString Sentencia_Fila(int fila, const QString& Hoy, const QString& Ahora);

protected:
    // ---- what the variants redefine
    struct DefColumna {
        const char* titulo;
        int ancho;       // twips
        char alineacion; // 'C' centre, 'R' right, 'G' general, 0 the grid's default
        bool cabezaCentrada;
        int8_t bloqueo; // 1 locked, 0 not, -1 left as the grid has it
    };
    virtual std::vector<DefColumna> Columnas() const;
    // Display moves, in their sequence (column, position), and hidden columns.
    virtual std::vector<std::pair<int, int>> Movidas() const;
    virtual std::vector<int> Ocultas() const;
    virtual QString Procedimiento() const { return QStringLiteral("TRU_CONSULTA_1127"); }
    // Looks up the positions of the result's columns once per query.
    virtual void Prepara_Campos();
    // Fills row `fila` of the matrix from the current record and adds it to the totals.
    virtual void Llena_Fila(int fila);
    // The fields of the current record that every console's row starts from.
    struct Registro {
        QString banco;
        bool devuelta = false; // returned to the client ("7777")
        double enviado = 0, recibido = 0, pago = 0;
        int16_t servicio = 0, proveedor = 0;
    };
    Registro Lee_Registro() const;
    virtual void Escribe_Pies();
    // After the batch of a payment run: the provider's gift balance.
    virtual void Actualiza_Regalo();
    // A bank code typed: returned to the client, back to unpaid, paid by a bank.
    virtual void Banco_Devolucion(int fila);
    virtual void Banco_Reverso(int fila);
    virtual void Banco_Pago(int fila, const QString& codigo);
    virtual void Servicio_Editado(int fila);
    // The payment run, after the dialog's fields are in a ticked row: its gain.
    virtual void Ganancia_Del_Pago(int fila);
    // How Text5 shows Suma_Sel.
    virtual QString Formato_Suma() const { return QStringLiteral("###,##0"); }
    // The assignments of a saved row between "ganancia" and "tipo_servicio":
    // here g1 to g3, the moment and prices of a payment run, bancozelle.
    virtual QString Asignaciones_Ganancia(int fila, const QString& Hoy, const QString& Ahora);

    // ---- pieces of the console's own routines that the variants share
    // " g1 = ... g3 = ...," of a saved row, the gain split with the provider from service 50.
    QString Asignaciones_G(int fila);
    // The bank, reference, operator, kind of operation, tick, service code and note of a loaded row.
    void Llena_Datos(int fila, const QString& banco, int16_t servicio);
    // Footers of the date, client code, received, estimate and paid.
    void Pies_Comunes();
    // The name of a typed bank; false, with the message and the cell emptied, for an unknown one.
    bool Banco_Registrado(int fila, const QString& codigo);
    // The cells of a row taken back to unpaid, up to colG3.
    void A_No_Pagada(int fila);
    // FIJAR of the consoles without ticks: the price on every unpaid row, no sum.
    void Fijar_Sin_Marcas();

    // Sets the matrix on the grid again and rebinds it, keeping the current cell.
    void Reenlaza();
    // The value of a cell as a number (an empty cell is 0).
    double Num(int fila, int col) const { return Celdas.Value(fila, col).numero(); }
    QString Txt(int fila, int col) const { return Celdas.Value(fila, col).texto(); }
    // The row in the shared I.
    int FilaI() const;

    // Positions of the query's columns in Rs, -1 where the query has none.
    struct Campos {
        int Fecha = -1, secuenciA = -1, C_CLIENTE = -1, Cliente = -1, Enviado = -1, recibido = -1, C_proveedor = -1,
            bancozelle = -1, tipo_servicio = -1, C_Banco = -1, confirmacion = -1, Pago = -1, referencia = -1, operadora = -1,
            tipo_operacion = -1, OBS = -1, Ganancia = -1, G1 = -1, G2 = -1, G3 = -1, fecha_pago = -1, hora_pago = -1, dolar1 = -1,
            dolar2 = -1;
    } campos;
    const Valor& Campo(int ordinal) const;

    // Texts that many rows share: a cell holds a shared copy instead of a
    // string of its own, so that a load of many rows allocates, and later
    // frees, far fewer strings. Emptied at each query.
    struct Compartidos {
        std::vector<QString> codigos;               // "0000" of 0 to 9999
        std::vector<QString> nombres;               // the first 14 characters of each service's name
        std::vector<std::array<QString, 3>> bancos; // a stored bank text, the code shown, the bank's name
        // A name of the cache by its code, and where the look-up left the shared J.
        struct Nombre {
            QString nombre;
            Valor j;
        };
        QHash<int16_t, Nombre> proveedores, clientes;
        std::vector<double> comisiones;                    // by row of the providers' cache; NaN until read
        std::array<std::pair<QString, QString>, 2> fechas; // dd/mm/yyyy of the last yyyymmdd, colFecha and colFechaPago
    } compartidos;
    const QString& Codigo(double valor);
    // An amount in the pattern, formatted only when the grid shows or a routine reads it.
    Celda Cifra(const FormatoNumero& formato, double valor);
    // col: colFecha or colFechaPago.
    const QString& Fecha_Vista(int col, const QString& amd);
    const std::array<QString, 3>& Banco_Vista(const QString& banco);
    const QString& Nombre_Servicio(int16_t servicio);
    // The provider's and the client's names from the cache, looked up once per code and query.
    const QString& Nombre_Proveedor(int16_t proveedor);
    const QString& Nombre_Cliente(int16_t cliente);
    // The provider's commission, read with the code as the row of the cache.
    double Comision(int16_t fila);

    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Llena_Combo();
    void Precios_Del_Momento();
    void Option2_Click();
    void Quitar_Marcas();
    // Walks the rows, handing each ticked one to `marcada` and counting it in
    // J; the count, or 0 when nothing is loaded or ticked (the operator is
    // told) or when `marcada` stops the walk.
    int Recorre_Marcadas(const std::function<bool(int)>& marcada);
    // A selection that cannot go on: the operator is told and every tick goes.
    void Rechaza_Seleccion(const QString& texto);
    // Text7 shows the text for two seconds, the screen held still meanwhile.
    void Aviso(const QString& texto);
    // The versions of the rows as this screen loaded them: its saves and
    // deletes are refused on rows that changed since.
    Versiones Versiones_Cargadas;
    // A save or delete refused on rows changed since the load: the operator
    // is told which, and the screen loads them as they are now.
    void Filas_Cambiadas(const FalloFilasCambiadas& f);
};
