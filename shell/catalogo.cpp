#include "catalogo.h"
#include "controles.h"
#include "formato.h"
#include "module1.h"

#include <QLineEdit>
#include <QPushButton>

Catalogo::Catalogo(Module1& modulo, MDIForm1& p, const QString& nombre, const QString& titulo, Lugar lugar)
    : Pantalla(modulo, p, nombre), lugar_(lugar)
{
    setWindowTitle(titulo);
}

void Catalogo::Form_Load() { Colocar(lugar_.top, lugar_.left, lugar_.width, lugar_.height); }

QLineEdit* Catalogo::etiqueta(int indice, const QString& texto, int x, int y, int w)
{
    // A caption that is an element of the same array as the fields, read-only.
    auto* t = new QLineEdit(texto, this);
    t->setGeometry(x, y, w, 24);
    t->setReadOnly(true);
    t->setFrame(false);
    t->setFocusPolicy(Qt::NoFocus);
    t->setStyleSheet(QStringLiteral("background: transparent;"));
    Controles::Nombrar(t, QStringLiteral("Text1"), indice, texto);
    Text1.insert(indice, t);
    return t;
}

QLineEdit* Catalogo::campo(int indice, const QString& nombre, int x, int y, int w, int largo)
{
    auto* t = new QLineEdit(this);
    t->setGeometry(x, y, w, 24);
    if (largo > 0)
        t->setMaxLength(largo);
    Controles::Nombrar(t, QStringLiteral("Text1"), indice, nombre);
    Text1.insert(indice, t);
    return t;
}

QPushButton* Catalogo::boton(const QString& nombre, const QString& titulo, int x, int y, int w, int h)
{
    return Controles::Boton(this, nombre, titulo, x, y, w, h);
}

void Catalogo::rejilla(int x, int y, int w, int h)
{
    GRID = new Rejilla(QStringLiteral("GRID"), this);
    GRID->setGeometry(x, y, w, h);
    connect(GRID, &Rejilla::AfterColEdit, this, [this] { GRID_AfterColEdit(); });
}

void Catalogo::Prepara_Grid()
{
    GRID->setAllowUpdate(bandera_ >= 0);
    for (int n = 0; n < columnas_.size(); ++n) {
        const ColumnaCatalogo& c = columnas_[n];
        GRID->Columns(n)
            .setWidth(c.ancho)
            .setCaption(c.titulo)
            .setAlignment(c.alineacion)
            .setHeadAlignment(c.cabeza)
            .setAllowFocus(c.foco)
            .setVisible(c.visible);
    }
    Celdas.ReDim(-1, -1, 0, 0);
    GRID->Array(Celdas);
    GRID->ReBind();
}

void Catalogo::Carga_Grid()
{
    for (int i : camposDeIngreso_)
        Text1.value(i)->hide();
    if (Procesar && !camposDeIngreso_.isEmpty())
        Procesar->hide();
    Prepara_Grid();
    Llama(lista_, Parametros_Lista());
    Llena_Grid();
}

void Catalogo::Llena_Grid()
{
    const int ultimaCol = int(columnas_.size()) - 1;
    int fila = -1;
    while (!m.Rs->Eof()) {
        ++fila;
        Celdas.ReDim(0, fila, 0, ultimaCol);
        for (int n = 0; n <= ultimaCol; ++n) {
            const ColumnaCatalogo& c = columnas_[n];
            if (!c.campo.isEmpty())
                Celdas.Value(fila, n) = Format(m.Rs->Fields(c.campo), c.formato);
        }
        if (bandera_ >= 0)
            Celdas.Value(fila, bandera_) = banderaInicial_;
        Fila_Leida(fila);
        m.Rs->MoveNext();
    }
    m.Cierra_Rs();
    GRID->Array(Celdas);
    GRID->ReBind();
}

void Catalogo::GRID_AfterColEdit()
{
    // Any edit marks its row, whatever the column and even when the text is
    // typed over unchanged.
    Celdas.Value(GRID->Bookmark(), bandera_) = true;
    GRID->Update();
}

QList<Valor> Catalogo::Valores_Modificar(int fila)
{
    QList<Valor> valores;
    for (int n : enviadas_)
        valores.append(Valor(Celdas.Value(fila, n).texto().trimmed()));
    return valores;
}

void Catalogo::MODIFICAR_Click()
{
    GRID->Update();
    for (int fila : Celdas.Filas())
        if (Celdas.Value(fila, bandera_).esVerdadero())
            Llama(modifica_, Valores_Modificar(fila));
    Recarga(recargaCache_);
}

void Catalogo::Modo_Ingreso(const QList<int>& vaciar, const QList<int>& mostrar, int foco)
{
    for (int i : vaciar)
        Text1.value(i)->clear();
    for (int i : mostrar) {
        QLineEdit* t = Text1.value(i);
        t->show();
        t->setText(t->text().trimmed());
    }
    Procesar->show();
    Text1.value(foco)->setFocus();
}

void Catalogo::Ingresa(const QString& procedimiento, const QList<Valor>& valores, bool recargaCache)
{
    Llama(procedimiento, valores);
    Recarga(recargaCache);
}

void Catalogo::Llama(const QString& procedimiento, const QList<Valor>& valores)
{
    m.Cierra_Rs();
    m.Prepara_Comando(procedimiento);
    for (int i = 0; i < valores.size(); ++i)
        m.Comando.Parameters(i + 1) = valores[i];
    m.Ejecuta_Comando();
}

void Catalogo::Recarga(bool cache)
{
    m.Cierra_Rs();
    Carga_Grid();
    if (cache)
        m.Carga_Tablas();
}
