#pragma once
// "Ingreso de transacciones": where an operator records a transfer as it comes
// in, field after field with Enter. It works out the dollars that arrive and
// the bolivar estimate, and stores the new row of MOVIMIENTOS. Beside the
// fields it keeps its own look-ups: clients and providers, the client search
// and creation, what the client has used before, and his photograph.
#include "celdas.h"
#include "pantalla.h"

#include <QString>
#include <array>
#include <cstdint>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QFrame;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class Rejilla;

class Movimientos : public Pantalla {
    Q_OBJECT
public:
    Movimientos(Module1& m, MDIForm1& principal);

    void Form_Load() override;
    void Form_Activate() override;

    // The fields of Text2. Element 9 is not part of the form.
    enum Campo : int {
        txtSecuencia = 0,
        txtOperadora,
        txtCliente,
        txtProveedor,
        txtEnviado,
        txtRecibido,
        txtEstimado, // the bolivars, estimated from the received dollars
        txtNombreOperadora,
        txtNombreCliente,
        txtObservacion = 10,
        txtLetra, // the service's letter
        txtNombreServicio,
    };

    // ---- controls, by their design names
    std::array<QLineEdit*, 13> Text2 {};
    QLineEdit* Text1_4; // search text and new client's name
    QDateEdit* Fecha1;
    QListWidget* List1; // services: " T - TRUMIN", item data the service code
    QListWidget* List2; // what the client has used
    QComboBox* Combo1;
    QComboBox* Combo2; // Zelle banks
    QPushButton* INCLUIR;
    QPushButton* SALIR;
    QPushButton* Ver_T;
    QPushButton* REFRESCA_C;
    QPushButton* Busca;
    QPushButton* Procesar;
    QCheckBox* Check1;
    QFrame* Frame3; // the large photo
    QLabel* Imagen;
    QLabel* Image1;
    Rejilla* GRID1; // clients
    Rejilla* GRID2; // providers
    Celdas Celdas1, Celdas2;

    // ---- members of the screen
    int16_t Cargado = 0;
    QString Fecha_T;
    int16_t Cod_Servicio = 0;
    bool Letra_OK = false;
    QString Ruta; // the client's review mark; "9999" under review

    // ---- routines
    void Prepara_Transaccion();
    void Carga_Clientes();
    void Carga_Proveedores();
    void Carga_Zelle();
    void Busca_Cliente();
    void Crea_Cliente();
    void Cuenta_Servicios();
    void Ver_Foto();
    void Incluir_Click();

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void Text2_Enter(int indice);
    void Letra_Cambiada();
    void List1_Click();
    int indiceDe(QObject* campo) const;
};
