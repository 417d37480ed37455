#pragma once
// What every catalogue screen does the same way: one reference table of the
// server in a grid, loaded at each activation (so coming back refreshes it
// and drops unsaved edits), an add mode whose fields stay hidden while
// browsing, and, where rows can change, a hidden flag column that an edit
// marks and that MODIFICAR walks, calling the screen's procedure once for
// each marked row with its cells trimmed. Rows are never deleted, and a code
// column never takes the focus.
//
// A screen states its differences: its grid columns, its procedures, its add
// fields, which cells it sends, and whether a change reloads the cache. The
// catalogues and the USDT services screen of the rates stand on it.
#include "celdas.h"
#include "pantalla.h"
#include "rejilla.h"
#include "valor.h"

#include <QList>
#include <QMap>
#include <QString>

class QLineEdit;
class QPushButton;

// One column of a catalogue grid, as it is laid out and loaded.
struct ColumnaCatalogo {
    QString titulo;
    QString campo;    // field of the list procedure; empty: not loaded from it
    QString formato;  // display pattern of the field
    int ancho = 1000; // twips
    Alineacion alineacion = Alineacion::General;
    Alineacion cabeza = Alineacion::General;
    bool foco = true;
    bool visible = true;
};

class Catalogo : public Pantalla {
    Q_OBJECT
public:
    void Form_Load() override;
    // Every activation reloads the grid.
    void Form_Activate() override { Carga_Grid(); }

    // Hides (or empties) the add fields, lays the grid out, runs the list
    // procedure and fills Celdas.
    virtual void Carga_Grid();
    // The grid's layout and an empty matrix.
    void Prepara_Grid();
    // The rows of Rs into Celdas, then bind.
    void Llena_Grid();
    // Sends every marked row, then reloads (and the cache, where it must).
    virtual void MODIFICAR_Click();
    // The values that MODIFICAR sends for a marked row, in the procedure's order.
    virtual QList<Valor> Valores_Modificar(int fila);

    // ---- controls, by their design names
    Rejilla* GRID = nullptr;
    QMap<int, QLineEdit*> Text1; // labels and fields of one control array
    QPushButton* INCLUIR = nullptr;
    QPushButton* Procesar = nullptr;
    QPushButton* MODIFICAR = nullptr;
    QPushButton* SALIR = nullptr;
    ::Celdas Celdas;

protected:
    struct Lugar {
        int top, left, width, height;
    };

    Catalogo(Module1& m, MDIForm1& principal, const QString& nombre, const QString& titulo, Lugar lugar);

    // ---- what each screen states
    QString lista_;    // list procedure
    QString modifica_; // procedure of a changed row; empty: no changes
    QList<ColumnaCatalogo> columnas_;
    int bandera_ = -1;           // flag column; -1: rows cannot change
    QString banderaInicial_;     // "" or "0" at load
    QList<int> enviadas_;        // cells sent for a changed row, trimmed
    bool recargaCache_ = false;  // MODIFICAR reloads the cache
    QList<int> camposDeIngreso_; // Text1 hidden at each load, with Procesar

    // Values of the list procedure, if any.
    virtual QList<Valor> Parametros_Lista() const { return {}; }
    // Rs stands on the row just written to Celdas at fila.
    virtual void Fila_Leida(int fila) { Q_UNUSED(fila); }

    // Enters the add mode: empties some fields, shows the others trimmed (a
    // label keeps its caption), shows Procesar and puts the focus on one.
    void Modo_Ingreso(const QList<int>& vaciar, const QList<int>& mostrar, int foco);
    // Calls an insert procedure, reloads the grid and, when told, the cache.
    void Ingresa(const QString& procedimiento, const QList<Valor>& valores, bool recargaCache);
    // One call of a procedure with its values by position; Rs holds its result.
    void Llama(const QString& procedimiento, const QList<Valor>& valores);
    // After a save: the grid anew and, when told, the cache.
    void Recarga(bool cache);

    // ---- building the form
    QLineEdit* etiqueta(int indice, const QString& texto, int x, int y, int w);
    QLineEdit* campo(int indice, const QString& nombre, int x, int y, int w, int largo = 0);
    QPushButton* boton(const QString& nombre, const QString& titulo, int x, int y, int w, int h = 30);
    void rejilla(int x, int y, int w, int h);

private:
    void GRID_AfterColEdit();
    Lugar lugar_;
};
