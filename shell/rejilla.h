#pragma once
// The grid of the table screens (catalogues, consoles, statistics). It shows a
// Celdas owned by the screen, bound by reference: it keeps no data of its own,
// and an edit goes straight into the matrix. Under the rows a strip of footers
// holds one text per column (the totals of a load), each exactly under its
// column. The screen lays it out column by column in twips, as the original
// form data did, each column by the name its screen gives it:
//
//   GRID->Columns(colEnvio).setWidth(1150).setCaption("Envio").setAlignment(Alineacion::Derecha);
//   GRID->Array(Celdas);             // after a load
//   GRID->Columns(colRecibido).setFooterText(Format(Total_Recibido, "#,###,##0.00"));
//
// and answers its events: AfterColEdit (mark the row in the hidden flag
// column), HeadClick (sort with ordenarPorColumna), DblClick and Click.
#include <QList>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class Celdas;
class QAction;
class QLabel;
class QMenu;
class QScrollBar;
class QTableView;
class QAbstractItemModel;

// Alignment of a column's cells and of its head, with the numbers of the
// original grid: 1 right, 2 centre, 3 general (text to the left, a number
// cell to the right).
enum class Alineacion { Izquierda = 0, Derecha = 1, Centro = 2, General = 3 };

class Rejilla;
class ModeloCeldas;

// A grid written out as one sheet of a workbook, under the sheet's name.
struct HojaExportada {
    QString nombre;
    const Rejilla* rejilla;
};
class DelegadoCeldas;

// One column of a grid, as Columns(n) gives it. Setters return the column so
// that a screen's layout routine reads as one line per column.
class Columna {
public:
    int indice() const { return n_; }

    // Width in twips (15 twips to a pixel); a width of a few twips hides the
    // content but keeps the column in its place.
    int Width() const;
    Columna& setWidth(int twips);
    // Heading; "\r" (or "\r\n") breaks it into two lines.
    QString Caption() const;
    Columna& setCaption(const QString& texto);
    Alineacion Alignment() const;
    Columna& setAlignment(Alineacion a);
    Alineacion HeadAlignment() const;
    Columna& setHeadAlignment(Alineacion a);
    // A column that cannot take the focus, or a locked one, is not editable;
    // a cell is editable when the grid allows updates and both permit it.
    bool AllowFocus() const;
    Columna& setAllowFocus(bool permitir);
    bool Locked() const;
    Columna& setLocked(bool bloqueada);
    // A hidden column keeps its cells: the screen still reads and writes them.
    bool Visible() const;
    Columna& setVisible(bool visible);
    // Display position, from 0. Moving a column shifts those in between.
    int Order() const;
    Columna& setOrder(int posicion);
    QString FooterText() const;
    Columna& setFooterText(const QString& texto);
    // Most characters that the cell's editor takes, as its table column holds
    // them; 0: no limit.
    int DataWidth() const;
    Columna& setDataWidth(int caracteres);

private:
    friend class Rejilla;
    Columna(Rejilla* r, int n) : r_(r), n_(n) {}
    Rejilla* r_;
    int n_;
};

class Rejilla : public QWidget {
    Q_OBJECT
public:
    // nombre: the control's design name ("GRID", "GRID1"): object name and
    // accessible name of the grid.
    explicit Rejilla(const QString& nombre, QWidget* parent = nullptr);
    ~Rejilla() override;

    // Column n of the grid, created with default layout if the grid had fewer.
    Columna Columns(int n);
    int columnas() const;

    // Grid-level layout.
    bool AllowUpdate() const { return permiteEditar_; }
    void setAllowUpdate(bool permitir);
    void setFontSize(double puntos);
    double FontSize() const;
    // Every row has this fixed height; rows are never measured one by one.
    int RowHeight() const { return altoFila_; }
    void setRowHeight(int twips);
    bool ColumnFooters() const { return conPies_; }
    void setColumnFooters(bool mostrar);

    // The matrix shown, by reference, and rebound at once. Without a matrix
    // the grid shows no rows. The matrix must outlive its binding.
    void Array(Celdas& celdas);
    Celdas* array() const { return celdas_; }
    // Shows the matrix anew after a load changed its rows.
    void ReBind();
    // Repaints after the cells changed in place (a sort, a rule of a screen).
    void Refresh();
    // Commits the cell under edit into the matrix, if there is one.
    void Update();

    // The current row, by matrix row number; -1 when there is none. Setting a
    // row that the grid does not show leaves it with no current row.
    int Bookmark() const;
    void setBookmark(int fila);
    // The current column; -1 when there is none.
    int Col() const;
    void setCol(int col);
    // The first selected row: with no row selected, the run-time failure
    // "Subíndice fuera del intervalo", as the original grid gave.
    int SelBookmark0() const;
    // The rows that hold a selected cell, in ascending order.
    QList<int> SelBookmarks() const;

    // Sorts the bound matrix over all its rows by the column, ascending, as
    // text or by numeric value, and refreshes. The footers stay as they are.
    void ordenarPorColumna(int col, bool numerica);

    // ---- copy and export, on the grid's context menu
    // The menu of the cells (right button, the menu key or Shift+F10) holds
    // "Copiar" (Ctrl+C), "Exportar a hoja de cálculo..." (Ctrl+E, the sheets
    // of hojas() to a file, see exportar.h) and, after a line, the actions
    // the screen adds. Its
    // actions act on this grid; the shortcuts of the added ones are the
    // screen's to give.
    void agregarAccion(QAction* accion);
    QMenu* menuContextual();
    // The columns as the operator sees them: in display order, without the
    // hidden ones and those too narrow to read (a search key kept in a
    // column a few twips wide).
    std::vector<int> columnasVistas() const;
    // A column's caption as copies, exports and reports head it: on one
    // line (a two-line head's break as a blank), without outer blanks.
    QString tituloEnUnaLinea(int col) const;
    // The selected cells as a spreadsheet or a mail takes them: a line of
    // captions, then a line a row, a tab between cells, each cell as shown.
    // A cell left out of a selection of several blocks stays empty.
    QString textoSeleccion() const;
    void copiarSeleccion() const;
    // What an export proposes as the file's name, without extension, and
    // the grids it writes, one sheet each. By default the screen's name in
    // lower case with today's date, and this grid alone.
    void setExportacion(std::function<QString()> nombreArchivo, std::function<std::vector<HojaExportada>()> hojas = {});
    QString nombreArchivo() const;
    std::vector<HojaExportada> hojas() const;

    // The parts of the grid, for tests and for the screens' fine tuning.
    QTableView* vista() const { return vista_; }
    QAbstractItemModel* modelo() const;
    // The footer label of a column (nullptr beyond the columns).
    QLabel* pie(int col) const;

signals:
    // A cell edit has been committed into the matrix.
    void AfterColEdit(int col);
    void Click();
    void DblClick();
    void HeadClick(int col);

protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;

public:
    QSize sizeHint() const override;

private:
    friend class Columna;
    friend class ModeloCeldas;
    friend class DelegadoCeldas;

    struct PropColumna {
        int ancho = 1215; // twips
        QString titulo;
        Alineacion alineacion = Alineacion::General;
        Alineacion alineacionCabeza = Alineacion::General;
        bool foco = true;
        bool bloqueada = false;
        int largo = 0; // DataWidth
        QString pie;
    };

    void asegurarColumna(int n);
    bool editable(int col) const;
    void distribuir();
    void colocarPies();
    void ajustarCabecera();
    int altoPies() const;
    void aplicarAlineacionPie(int col);
    void anunciarPie(int col);
    void despuesDeEditar(int fila, int col);
    void prepararMenu();
    void mostrarMenu(const QPoint& punto);

    QString nombre_;
    Celdas* celdas_ = nullptr;
    std::vector<PropColumna> props_;
    std::vector<QLabel*> pies_;
    bool permiteEditar_ = true;
    bool conPies_ = false;
    int altoFila_ = 0;
    bool confirmando_ = false;
    bool conBarra_ = false;

    QTableView* vista_ = nullptr;
    ModeloCeldas* modelo_ = nullptr;
    DelegadoCeldas* delegado_ = nullptr;
    QWidget* tiraPies_ = nullptr;
    QScrollBar* barra_ = nullptr;
    QMenu* menu_ = nullptr;
    QList<QAction*> accionesPantalla_;
    std::function<QString()> nombreArchivo_;
    std::function<std::vector<HojaExportada>()> hojas_;
};
