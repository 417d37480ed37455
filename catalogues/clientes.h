#pragma once
// "Clientes": the clients who send money, with their review mark (Revisar).
// Beside the catalogue pattern: a filter by the service the clients used, a
// search by text, jumps to the first and last row, and the client's photo,
// shown on a click and replaced from a picture file.
#include "catalogo.h"

#include <QString>
#include <cstdint>
#include <functional>

class QCheckBox;
class QFrame;
class QLabel;
class QListWidget;

class Clientes : public Catalogo {
    Q_OBJECT
public:
    Clientes(Module1& m, MDIForm1& principal);

    enum Columna : int {
        colCodigo = 0,
        colDescripcion,
        colMod,     // the change mark
        colTM,      // never loaded
        colRevisar, // the review mark; "9999" under review
    };
    // The elements of Text1, captions among the fields. The count, the
    // client's code and the picture's path are written by the screen.
    enum Campo : int {
        rotCodigo = 0,
        txtCodigo,
        rotDescripcion,
        txtDescripcion, // the name of a new client
        rotBusqueda,
        txtBusqueda,
        txtFilas,   // the count of the last full list
        txtArchivo, // the picture file chosen by FOTO
        rotCliente,
        txtCliente, // the client clicked, whose photo is shown
    };

    void Form_Activate() override;
    void Carga_Grid() override;
    void Carga_Servicios();
    void Muestra_Foto();

    void List1_Click();
    void Busca_Click();
    void GRID_Click();
    void INCLUIR_Click();
    void Procesar_Click();
    void FOTO_Click();
    void GRABAR_IMAGEN_Click();

    // ---- controls beyond the pattern
    QLineEdit* Text2; // the message of the photo area
    QListWidget* List1;
    QPushButton* CONSULTAR;
    QPushButton* Busca;
    QPushButton* Command1;
    QPushButton* Ultimo;
    QPushButton* FOTO;
    QPushButton* GRABAR_IMAGEN;
    QCheckBox* Check1;
    QLabel* Imagen;
    QFrame* Frame1;
    QLabel* Image1;

    // ---- members of the screen
    int16_t Servicio_Filtro = 0;
    int16_t N_Filas = 0;
    int16_t Fila = 0;
    QString Revisar_Fila;

    // The file-open dialog of FOTO: the chosen path, "" when cancelled.
    // Tests put their own choice here. It opens in Dialogo_InitDir, which
    // FOTO sets to the user's pictures before each search.
    std::function<QString()> Dialogo_ShowOpen;
    QString Dialogo_InitDir;

protected:
    QList<Valor> Parametros_Lista() const override;

private:
    // A message in the photo area, held in view for two seconds.
    void Aviso(const QString& texto);
    static QByteArray Lee_Archivo(const QString& ruta);
};
