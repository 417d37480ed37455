#include "clientes.h"
#include "controles.h"
#include "fallo.h"
#include "formato.h"
#include "foto.h"
#include "mensajes.h"
#include "module1.h"
#include "numeros.h"

#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

using Mensajes::MsgBox;

Clientes::Clientes(Module1& modulo, MDIForm1& p)
    : Catalogo(modulo, p, QStringLiteral("Clientes"), QStringLiteral("Clientes"), {100, 1001, 19050, 9500})
{
    lista_ = QStringLiteral("TRU_CLIENTES_01");
    modifica_ = QStringLiteral("TRU_MOD_CLIENTES");
    const auto centro = Alineacion::Centro;
    columnas_ = {
        // in the order of Columna
        {QStringLiteral("Codigo"), QStringLiteral("C_CLIENTE"), QStringLiteral("0000"), 1000, centro, centro, false},
        {QStringLiteral("Descripcion"), QStringLiteral("D_cliente"), QStringLiteral("&"), 4700},
        {QStringLiteral("Mod"), QString(), QString(), 500, centro, centro, true, false},
        {QStringLiteral("T-M"), QString(), QString(), 1000, Alineacion::Derecha, centro, false, false},
        {QStringLiteral("Revisar"), QStringLiteral("Revisar"), QStringLiteral("&"), 1000, centro, centro},
    };
    bandera_ = colMod;
    enviadas_ = {colCodigo, colDescripcion, colRevisar};
    recargaCache_ = true;
    camposDeIngreso_ = {rotCodigo, txtCodigo, rotDescripcion, txtDescripcion};

    // ---- search and grid, left
    etiqueta(rotBusqueda, QStringLiteral("Busqueda"), 10, 12, 80);
    campo(txtBusqueda, QStringLiteral("Busqueda"), 90, 12, 250);
    Busca = boton(QStringLiteral("Busca"), QStringLiteral("Buscar"), 345, 9, 90);
    // The count, the client's code and the picture's path are written by the
    // screen, never typed: no length limit cuts what the screen writes there.
    campo(txtFilas, QStringLiteral("Filas"), 445, 12, 60)->setReadOnly(true);
    rejilla(10, 46, 495, 484);
    Command1 = boton(QStringLiteral("Command1"), QStringLiteral("Fila 1"), 10, 540, 120);
    Ultimo = boton(QStringLiteral("Ultimo"), QStringLiteral("Ultima Fila"), 140, 540, 120);

    // ---- filter, add and save, middle
    const int xm = 525;
    List1 = new QListWidget(this);
    List1->setGeometry(xm, 12, 240, 190);
    Controles::Nombrar(List1, QStringLiteral("List1"), QStringLiteral("Servicio"));
    CONSULTAR = boton(QStringLiteral("CONSULTAR"), QStringLiteral("Consultar Clientes"), xm, 210, 240);
    INCLUIR = boton(QStringLiteral("INCLUIR"), QStringLiteral("Incluir Cliente"), xm, 260, 240);
    etiqueta(rotCodigo, QStringLiteral("Código"), xm, 298, 90);
    campo(txtCodigo, QStringLiteral("Código"), xm + 95, 298, 60, 4);
    etiqueta(rotDescripcion, QStringLiteral("Descripción"), xm, 298, 240);
    campo(txtDescripcion, QStringLiteral("Descripción"), xm, 326, 240, 40);
    Procesar = boton(QStringLiteral("Procesar"), QStringLiteral("Procesar Ingreso"), xm, 358, 240);
    MODIFICAR = boton(QStringLiteral("MODIFICAR"), QStringLiteral("Procesar Modificaciones"), xm, 410, 240);
    SALIR = boton(QStringLiteral("SALIR"), QStringLiteral("Salir"), xm, 540, 240);

    // ---- the photograph, right
    const int xf = 785;
    etiqueta(rotCliente, QStringLiteral("Cliente ="), xf, 12, 75);
    campo(txtCliente, QStringLiteral("Cliente"), xf + 80, 12, 60)->setReadOnly(true);
    Imagen = new QLabel(this);
    Imagen->setGeometry(xf, 44, 260, 325);
    Imagen->setAlignment(Qt::AlignCenter);
    Imagen->setFrameShape(QFrame::Box);
    Controles::Nombrar(Imagen, QStringLiteral("Imagen"), QStringLiteral("Foto del cliente"));
    Text2 = new QLineEdit(QStringLiteral("CLIENTE NO TIENE FOTO"), this);
    Text2->setGeometry(xf, 180, 260, 34);
    Text2->setReadOnly(true);
    Text2->setAlignment(Qt::AlignCenter);
    Text2->setStyleSheet(QStringLiteral("color: red; font-weight: bold;"));
    Controles::Nombrar(Text2, QStringLiteral("Text2"), QStringLiteral("Aviso de la foto"));
    Text2->hide();
    FOTO = boton(QStringLiteral("FOTO"), QStringLiteral("Buscar Foto"), xf, 378, 125);
    GRABAR_IMAGEN = boton(QStringLiteral("GRABAR_IMAGEN"), QStringLiteral("Grabar Foto"), xf + 135, 378, 125);
    campo(txtArchivo, QStringLiteral("Archivo de la foto"), xf, 416, 260)->setReadOnly(true);
    Check1 = new QCheckBox(QStringLiteral("Foto Grande"), this);
    Check1->setGeometry(xf, 450, 200, 24);
    Controles::Nombrar(Check1, QStringLiteral("Check1"), QStringLiteral("Foto Grande"));
    Frame1 = new QFrame(this);
    Frame1->setGeometry(10, 10, 755, 560);
    Frame1->setFrameShape(QFrame::Box);
    Frame1->setAutoFillBackground(true);
    Controles::Nombrar(Frame1, QStringLiteral("Frame1"), QStringLiteral("Foto grande del cliente"));
    Image1 = new QLabel(Frame1);
    Image1->setGeometry(4, 4, 747, 552);
    Image1->setAlignment(Qt::AlignCenter);
    Controles::Nombrar(Image1, QStringLiteral("Image1"), QStringLiteral("Foto grande del cliente"));
    Frame1->hide();

    Dialogo_ShowOpen = [this] {
        return QFileDialog::getOpenFileName(this, QStringLiteral("Buscar Foto"), Dialogo_InitDir,
                                            QStringLiteral("Fotos (*.jpg *.jpeg *.png);;Todos los archivos (*)"));
    };

    // The arrow keys choose as the mouse does, and the screen's own choice of
    // item 0 at activation is a click too: it puts the filter back to all.
    connect(List1, &QListWidget::currentRowChanged, this, [this] { List1_Click(); });
    connect(CONSULTAR, &QPushButton::clicked, this, [this] { Carga_Grid(); });
    connect(Busca, &QPushButton::clicked, this, [this] { Busca_Click(); });
    connect(Command1, &QPushButton::clicked, this, [this] { GRID->setBookmark(0); });
    connect(Ultimo, &QPushButton::clicked, this, [this] { GRID->setBookmark(N_Filas - 1); });
    connect(GRID, &Rejilla::Click, this, [this] { GRID_Click(); });
    connect(GRID, &Rejilla::HeadClick, this, [this](int col) { GRID->ordenarPorColumna(col, false); });
    connect(INCLUIR, &QPushButton::clicked, this, [this] { INCLUIR_Click(); });
    connect(Procesar, &QPushButton::clicked, this, [this] { Procesar_Click(); });
    connect(MODIFICAR, &QPushButton::clicked, this, [this] { MODIFICAR_Click(); });
    connect(FOTO, &QPushButton::clicked, this, [this] { FOTO_Click(); });
    connect(GRABAR_IMAGEN, &QPushButton::clicked, this, [this] { GRABAR_IMAGEN_Click(); });
    connect(Check1, &QCheckBox::clicked, this, [this] {
        Frame1->setVisible(Check1->isChecked());
        Frame1->raise();
    });
    connect(SALIR, &QPushButton::clicked, this, [this] { Unload(); });
}

void Clientes::Form_Activate()
{
    Fila = 0;
    Carga_Servicios();
    Carga_Grid();
}

void Clientes::Carga_Servicios()
{
    List1->clear();
    m.J = 0;
    List1->addItem(QStringLiteral("00 - TODOS"));
    for (int codigo = 1; codigo <= m.N_Servicios; ++codigo) {
        const auto& servicio = m.Servicios_T(codigo);
        if (servicio[1].isEmpty())
            continue; // a gap in the codes leaves no item
        m.J = int(m.J.aDouble()) + 1;
        List1->addItem(Format(double(codigo), QStringLiteral("00")) + QStringLiteral(" - ") + servicio[2]);
    }
    List1->setCurrentRow(0);
}

// One filter stands at a time; the grid waits for CONSULTAR.
void Clientes::List1_Click()
{
    QListWidgetItem* elegido = List1->currentItem();
    if (!elegido)
        return;
    Servicio_Filtro = Numeros::CInt(Numeros::CDbl(elegido->text().left(2)));
    for (int i = 0; i < List1->count(); ++i)
        if (List1->item(i) != elegido)
            List1->item(i)->setSelected(false);
}

QList<Valor> Clientes::Parametros_Lista() const { return {Valor(int(Servicio_Filtro))}; }

void Clientes::Carga_Grid()
{
    Reloj_De_Arena(true);
    Catalogo::Carga_Grid();
    Fila = int16_t(Celdas.UpperBound(1));
    Text1[txtFilas]->setText(QString::number(Fila + 1));
    N_Filas = int16_t(Fila + 1);
    Text1[txtBusqueda]->setFocus();
    Imagen->clear();
    m.K = 0;
    Text1[txtCliente]->clear();
    Revisar_Fila.clear();
    Text1[txtArchivo]->clear();
    Reloj_De_Arena(false);
}

// The count, N_Filas and the selection keep speaking of the last full list.
void Clientes::Busca_Click()
{
    Prepara_Grid();
    Llama(QStringLiteral("TRU_Busca_CLIENTES"), {Valor(Text1[txtBusqueda]->text().trimmed())});
    Llena_Grid();
    Text1[txtBusqueda]->setFocus();
}

void Clientes::GRID_Click()
{
    const int fila = GRID->SelBookmark0();
    m.K = Valor(Celdas.Value(fila, colCodigo).texto());
    Revisar_Fila = Celdas.Value(fila, colRevisar).texto();
    Text1[txtCliente]->setText(Format(m.K, QStringLiteral("0000")));
    Muestra_Foto();
}

void Clientes::INCLUIR_Click() { Modo_Ingreso({txtCodigo, txtDescripcion}, {rotDescripcion, txtDescripcion}, txtDescripcion); }

// An empty name is not refused; the new client arrives on the last row.
void Clientes::Procesar_Click()
{
    Ingresa(QStringLiteral("TRU_IN_CLIENTES_01"), {Valor(Text1[txtDescripcion]->text())}, true);
    GRID->setBookmark(N_Filas - 1);
}

void Clientes::Aviso(const QString& texto)
{
    Text2->setText(texto);
    Text2->show();
    Text2->raise();
    repaint();
    m.Espera(2);
    Text2->hide();
}

void Clientes::Muestra_Foto()
{
    bool sinFoto = false;
    const QByteArray foto = Foto::Lee(m, m.K.aTexto(), Revisar_Fila == QLatin1String("9999"), &sinFoto);
    if (sinFoto)
        Aviso(QStringLiteral("Cliente no tiene Foto"));
    Foto::Muestra(Imagen, foto);
    Foto::Muestra(Image1, foto);
    Text1[txtArchivo]->clear(); // what is on the screen is stored already
}

QByteArray Clientes::Lee_Archivo(const QString& ruta)
{
    QFile archivo(ruta);
    if (!archivo.open(QIODevice::ReadOnly))
        throw FalloEjecucion(53, FalloEjecucion::Texto(53) + QStringLiteral(": ") + ruta);
    return archivo.readAll();
}

// The chosen picture is only shown; GRABAR_IMAGEN stores it.
void Clientes::FOTO_Click()
{
    if (m.K.aDouble() == 0) {
        MsgBox(QStringLiteral("No selecciono ningun Cliente"));
        return;
    }
    Dialogo_InitDir = Foto::Carpeta_De_Fotos();
    QLineEdit* const archivo = Text1[txtArchivo];
    archivo->setText(Dialogo_ShowOpen());
    if (archivo->text().isEmpty())
        Imagen->clear();
    else
        Foto::Muestra(Imagen, Lee_Archivo(archivo->text()));
}

// The path stays in its field, so a second click stores the same file again.
// What is stored is the picture at the size of the screens, not the file.
void Clientes::GRABAR_IMAGEN_Click()
{
    const QString ruta = Text1[txtArchivo]->text().trimmed();
    if (ruta.isEmpty()) {
        MsgBox(QStringLiteral("----- ESA FOTO YA ESTA GRABADA -------"));
        return;
    }
    const QByteArray foto = Foto::Para_Grabar(Lee_Archivo(ruta));
    Llama(QStringLiteral("TRU_IN_FOTOS"), {m.K, Valor(foto)});
    m.Cierra_Rs();
    Aviso(QStringLiteral("Foto Grabada"));
}
