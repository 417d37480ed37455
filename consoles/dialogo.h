#pragma once
// "Sumarización y Proceso de Pago": the small modal dialog a console opens to
// pay a selection of transactions. It shows how many and how much
// (Sel_Cuenta, Sel_Total), asks for the provider, the bank reference, the bank
// and the kind of operation, and gives its answer in the Ref_ fields of the
// session. It touches no table.
#include <QDialog>

#include <array>
#include <functional>

class Module1;
class QLineEdit;
class QPushButton;
class QRadioButton;

class Dialogo : public QDialog {
    Q_OBJECT
public:
    Dialogo(Module1& m, QWidget* padre = nullptr);

    // Fills the fields from the selection and sets the defaults of the answer.
    void Form_Activate();

    // Shows the dialog modally with its activation done; on return the Ref_
    // fields hold the answer.
    static void Mostrar(Module1& m, QWidget* padre);
    // Replaces the modal run (tests): the function receives the activated
    // dialog and plays the operator's part. An empty function restores it.
    using Ejecutor = std::function<void(Dialogo&)>;
    static void Reemplazar(Ejecutor ejecutor);

    // The fields of Text2, the banks of Option2 and the kinds of operation of Option3.
    enum Campo : int { txtMonto = 0, txtCodProveedor, txtReferencia, txtNombreProveedor, txtTransacciones };
    enum Banco : int { bcoVenezuela = 0, bcoBanesco, bcoOtros };
    enum Operacion : int { opPagoMovil = 0, opTransferencia, opTransferenciaDirecta };

    std::array<QLineEdit*, txtTransacciones + 1> Text2 {};
    std::array<QRadioButton*, bcoOtros + 1> Option2 {};
    std::array<QRadioButton*, opTransferenciaDirecta + 1> Option3 {};
    QPushButton* OKButton;
    QPushButton* CancelButton;

    void OKButton_Click();
    void CancelButton_Click();

private:
    void Text2_1_Enter();
    Module1& m;
};
