#pragma once
// The batch entry screen: up to 24 transfers of one date typed as lines of a
// grid and stored in one go, each line as a new row of MOVIMIENTOS in the
// same positional shape as the entry screen's. Beside the lines stand the
// client and provider look-ups; a double click on one of them writes its
// code into the current line. No menu entry leads here: the screen is known
// by its name, "Form1".
#include "celdas.h"
#include "pantalla.h"

class QDateEdit;
class QLineEdit;
class QPushButton;
class Rejilla;

class Form1 : public Pantalla {
    Q_OBJECT
public:
    Form1(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    void Form_Activate() override;

    // The 24 empty lines, with operator 1 and the letter T.
    void Prepara_Lineas();
    void Carga_Clientes();
    void Carga_Proveedores();
    void Busca_Cliente();
    // Sends every line with a client, in one raw execution.
    void INCLUIR_Click();

    static constexpr int kLineas = 24;
    // The columns of a line. A code column has its name at its right.
    enum Columna : int {
        colSecuencia = 0, // given at the store
        colCliente,
        colNombreCliente,
        colEnviado,
        colRecibido,
        colProveedor,
        colNombreProveedor,
        colOperadora,
        colLetra, // the service's letter
    };

    // ---- controls, by their design names
    QDateEdit* Fecha1;
    Rejilla* GRID;    // the lines
    Rejilla* grid1;   // clients
    Rejilla* grid2;   // providers
    QLineEdit* Text1; // search text of the clients
    QPushButton* INCLUIR;
    QPushButton* REFRESCA_C;
    QPushButton* Command1;
    QPushButton* Busca;
    QPushButton* SALIR;
    ::Celdas Celdas, Celdas1, Celdas2;

private:
    void Carga_Lista(Rejilla* grid, ::Celdas& celdas, const QString& titulo, const QString& procedimiento,
                     const QString& campoCodigo, const QString& campoNombre, const QString& busqueda = QString());
    void GRID_AfterColEdit(int col);
    // A double click on a look-up writes its code and name into the current
    // line, at colCodigo and the name at its right.
    void Elige(const ::Celdas& lista, Rejilla* grid, int colCodigo);
    // The code of the service with that letter; 0 when no service has it.
    int Servicio_De_Letra(const QString& letra) const;
};
