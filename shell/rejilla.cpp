#include "rejilla.h"
#include "rejilla_celdas.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>

#include <set>

using namespace rejilla;

// ---------------------------------------------------------------- Columna

int Columna::Width() const
{
    const QHeaderView* h = r_->vista_->horizontalHeader();
    const int guardado = r_->props_[size_t(n_)].ancho;
    if (h->isSectionHidden(n_) || h->sectionSize(n_) == aPixeles(guardado))
        return guardado;
    return h->sectionSize(n_) * 15; // resized by the operator
}

Columna& Columna::setWidth(int twips)
{
    r_->props_[size_t(n_)].ancho = twips;
    r_->vista_->horizontalHeader()->resizeSection(n_, aPixeles(twips));
    r_->colocarPies();
    return *this;
}

QString Columna::Caption() const { return r_->props_[size_t(n_)].titulo; }

Columna& Columna::setCaption(const QString& texto)
{
    r_->props_[size_t(n_)].titulo = texto;
    r_->anunciarPie(n_);
    emit r_->modelo_->headerDataChanged(Qt::Horizontal, n_, n_);
    r_->ajustarCabecera();
    return *this;
}

Alineacion Columna::Alignment() const { return r_->props_[size_t(n_)].alineacion; }

Columna& Columna::setAlignment(Alineacion a)
{
    r_->props_[size_t(n_)].alineacion = a;
    r_->aplicarAlineacionPie(n_);
    r_->vista_->viewport()->update();
    return *this;
}

Alineacion Columna::HeadAlignment() const { return r_->props_[size_t(n_)].alineacionCabeza; }

Columna& Columna::setHeadAlignment(Alineacion a)
{
    r_->props_[size_t(n_)].alineacionCabeza = a;
    emit r_->modelo_->headerDataChanged(Qt::Horizontal, n_, n_);
    return *this;
}

bool Columna::AllowFocus() const { return r_->props_[size_t(n_)].foco; }

Columna& Columna::setAllowFocus(bool permitir)
{
    r_->props_[size_t(n_)].foco = permitir;
    return *this;
}

bool Columna::Locked() const { return r_->props_[size_t(n_)].bloqueada; }

Columna& Columna::setLocked(bool bloqueada)
{
    r_->props_[size_t(n_)].bloqueada = bloqueada;
    return *this;
}

int Columna::DataWidth() const { return r_->props_[size_t(n_)].largo; }

Columna& Columna::setDataWidth(int caracteres)
{
    r_->props_[size_t(n_)].largo = caracteres;
    return *this;
}

bool Columna::Visible() const { return !r_->vista_->horizontalHeader()->isSectionHidden(n_); }

Columna& Columna::setVisible(bool visible)
{
    r_->vista_->setColumnHidden(n_, !visible);
    r_->colocarPies();
    return *this;
}

int Columna::Order() const { return r_->vista_->horizontalHeader()->visualIndex(n_); }

Columna& Columna::setOrder(int posicion)
{
    QHeaderView* h = r_->vista_->horizontalHeader();
    h->moveSection(h->visualIndex(n_), std::clamp(posicion, 0, h->count() - 1));
    r_->colocarPies();
    return *this;
}

QString Columna::FooterText() const { return r_->props_[size_t(n_)].pie; }

Columna& Columna::setFooterText(const QString& texto)
{
    r_->props_[size_t(n_)].pie = texto;
    r_->pies_[size_t(n_)]->setText(texto);
    r_->anunciarPie(n_);
    return *this;
}

// ---------------------------------------------------------------- Rejilla

Rejilla::Rejilla(const QString& nombre, QWidget* parent) : QWidget(parent), nombre_(nombre)
{
    setObjectName(nombre);
    setAccessibleName(nombre);

    vista_ = new VistaCeldas(this);
    vista_->setObjectName(nombre + QStringLiteral("_celdas"));
    vista_->setAccessibleName(nombre);
    modelo_ = new ModeloCeldas(this);
    delegado_ = new DelegadoCeldas(this, vista_);
    vista_->setModel(modelo_);
    vista_->setItemDelegate(delegado_);
    vista_->setWordWrap(false);
    vista_->setTextElideMode(Qt::ElideNone);
    vista_->setCornerButtonEnabled(false);
    vista_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    vista_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    vista_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    vista_->setSelectionBehavior(QAbstractItemView::SelectItems);
    // A double click belongs to the screen (DblClick); an edit starts by
    // typing, by the edit key, or by a click on the current cell.
    vista_->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::SelectedClicked);

    // Rows all of one height, never measured: fluid with any number of rows.
    QHeaderView* vh = vista_->verticalHeader();
    vh->setSectionResizeMode(QHeaderView::Fixed);
    vh->setMinimumSectionSize(1);
    vh->setFixedWidth(14);
    vh->setDefaultSectionSize(vista_->fontMetrics().height() + 4);

    QHeaderView* h = vista_->horizontalHeader();
    h->setSectionsClickable(true);
    h->setSectionsMovable(false);
    h->setHighlightSections(false);
    h->setMinimumSectionSize(0);
    h->setStretchLastSection(false);
    h->setSectionResizeMode(QHeaderView::Interactive);
    // A click on a head is the screen's to answer: it selects nothing.
    QObject::disconnect(h, &QHeaderView::sectionPressed, vista_, nullptr);
    QObject::disconnect(h, &QHeaderView::sectionEntered, vista_, nullptr);

    tiraPies_ = new QWidget(this);
    tiraPies_->setObjectName(nombre + QStringLiteral("_pies"));
    tiraPies_->setVisible(false);
    barra_ = new QScrollBar(Qt::Horizontal, this);
    barra_->setVisible(false);

    // The grid's own horizontal bar sits under the footers, in step with the
    // view's hidden one.
    QScrollBar* interna = vista_->horizontalScrollBar();
    connect(interna, &QScrollBar::rangeChanged, this, [this, interna](int minimo, int maximo) {
        barra_->setRange(minimo, maximo);
        barra_->setPageStep(interna->pageStep());
        barra_->setSingleStep(interna->singleStep());
        const bool ver = maximo > minimo;
        if (ver != conBarra_) {
            conBarra_ = ver;
            distribuir();
        }
    });
    connect(interna, &QScrollBar::valueChanged, this, [this](int v) {
        barra_->setValue(v);
        colocarPies();
    });
    connect(barra_, &QScrollBar::valueChanged, interna, &QScrollBar::setValue);

    connect(h, &QHeaderView::sectionResized, this, [this] { colocarPies(); });
    connect(h, &QHeaderView::sectionMoved, this, [this] { colocarPies(); });
    connect(h, &QHeaderView::geometriesChanged, this, [this] { distribuir(); });
    connect(h, &QHeaderView::sectionClicked, this, [this](int col) { emit HeadClick(col); });
    connect(vista_, &QAbstractItemView::clicked, this, [this] { emit Click(); });
    connect(vista_, &QAbstractItemView::doubleClicked, this, [this] { emit DblClick(); });
    vista_->viewport()->installEventFilter(this);
    vista_->installEventFilter(this);
    prepararMenu();
}

Rejilla::~Rejilla()
{
    // The view asks the model for headings while it goes; both go before the
    // column layout they read.
    delete vista_;
    delete modelo_;
}

QAbstractItemModel* Rejilla::modelo() const { return modelo_; }

QLabel* Rejilla::pie(int col) const { return col >= 0 && size_t(col) < pies_.size() ? pies_[size_t(col)] : nullptr; }

QSize Rejilla::sizeHint() const { return vista_->sizeHint(); }

Columna Rejilla::Columns(int n)
{
    if (n < 0)
        throw FalloEjecucion::fueraDeRango();
    asegurarColumna(n);
    return Columna(this, n);
}

int Rejilla::columnas() const { return int(props_.size()); }

void Rejilla::asegurarColumna(int n)
{
    if (size_t(n) < props_.size())
        return;
    const int desde = int(props_.size());
    props_.resize(size_t(n) + 1);
    for (int c = desde; c <= n; ++c) {
        auto* l = new QLabel(tiraPies_);
        l->setObjectName(QStringLiteral("%1_pie%2").arg(nombre_).arg(c));
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setIndent(2);
        pies_.push_back(l);
        aplicarAlineacionPie(c);
        anunciarPie(c);
    }
    modelo_->agregarColumnas(n);
    for (int c = desde; c <= n; ++c)
        vista_->horizontalHeader()->resizeSection(c, aPixeles(props_[size_t(c)].ancho));
    colocarPies();
}

bool Rejilla::editable(int col) const
{
    if (!permiteEditar_ || col < 0 || size_t(col) >= props_.size())
        return false;
    const PropColumna& p = props_[size_t(col)];
    return p.foco && !p.bloqueada;
}

void Rejilla::setAllowUpdate(bool permitir) { permiteEditar_ = permitir; }

void Rejilla::setFontSize(double puntos)
{
    QFont f = vista_->font();
    f.setPointSizeF(puntos);
    vista_->setFont(f);
    tiraPies_->setFont(f);
    if (altoFila_ == 0)
        vista_->verticalHeader()->setDefaultSectionSize(QFontMetrics(f).height() + 4);
    ajustarCabecera();
    distribuir();
}

double Rejilla::FontSize() const { return vista_->font().pointSizeF(); }

void Rejilla::setRowHeight(int twips)
{
    altoFila_ = twips;
    vista_->verticalHeader()->setDefaultSectionSize(std::max(1, aPixeles(twips)));
}

void Rejilla::setColumnFooters(bool mostrar)
{
    conPies_ = mostrar;
    distribuir();
}

void Rejilla::Array(Celdas& celdas)
{
    celdas_ = &celdas;
    ReBind();
}

void Rejilla::ReBind()
{
    if (celdas_ && celdas_->UpperBound(2) >= 0)
        asegurarColumna(celdas_->UpperBound(2));
    modelo_->reiniciar();
    colocarPies();
}

void Rejilla::Refresh()
{
    if (!celdas_ || celdas_->filas() != modelo_->filas_) {
        ReBind();
        return;
    }
    modelo_->todoCambiado();
    vista_->viewport()->update();
}

void Rejilla::Update()
{
    if (confirmando_)
        return;
    QWidget* editor = delegado_->editor();
    if (editor) {
        emit delegado_->commitData(editor);
        emit delegado_->closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void Rejilla::despuesDeEditar(int fila, int col)
{
    confirmando_ = true;
    try {
        emit AfterColEdit(col);
    } catch (...) {
        confirmando_ = false;
        throw;
    }
    confirmando_ = false;
    // The screen's rules may have rewritten other cells of the row.
    modelo_->filaCambiada(fila);
}

int Rejilla::Bookmark() const
{
    const QModelIndex i = vista_->currentIndex();
    return i.isValid() ? modelo_->primeraFila() + i.row() : -1;
}

void Rejilla::setBookmark(int fila)
{
    const int r = fila - modelo_->primeraFila();
    if (r < 0 || r >= modelo_->filas_) {
        vista_->selectionModel()->clearCurrentIndex();
        return;
    }
    int col = vista_->currentIndex().column();
    if (col < 0) {
        const QHeaderView* h = vista_->horizontalHeader();
        for (int v = 0; v < h->count() && col < 0; ++v)
            if (!h->isSectionHidden(h->logicalIndex(v)))
                col = h->logicalIndex(v);
    }
    if (col < 0)
        return;
    const QModelIndex i = modelo_->index(r, col);
    vista_->setCurrentIndex(i);
    vista_->scrollTo(i);
}

int Rejilla::Col() const
{
    const QModelIndex i = vista_->currentIndex();
    return i.isValid() ? i.column() : -1;
}

void Rejilla::setCol(int col)
{
    if (col < 0 || col >= modelo_->columnas_ || modelo_->filas_ == 0)
        return;
    const int r = std::max(vista_->currentIndex().row(), 0);
    const QModelIndex i = modelo_->index(r, col);
    vista_->setCurrentIndex(i);
    vista_->scrollTo(i);
}

QList<int> Rejilla::SelBookmarks() const
{
    std::set<int> filas;
    for (const QModelIndex& i : vista_->selectionModel()->selectedIndexes())
        filas.insert(modelo_->primeraFila() + i.row());
    return QList<int>(filas.begin(), filas.end());
}

int Rejilla::SelBookmark0() const
{
    const QModelIndexList sel = vista_->selectionModel()->selectedIndexes();
    if (sel.isEmpty())
        throw FalloEjecucion::fueraDeRango();
    int menor = sel.first().row();
    for (const QModelIndex& i : sel)
        menor = std::min(menor, i.row());
    return modelo_->primeraFila() + menor;
}

void Rejilla::ordenarPorColumna(int col, bool numerica)
{
    if (!celdas_)
        return;
    Update();
    celdas_->QuickSort(celdas_->LowerBound(1), celdas_->UpperBound(1), col,
                       numerica ? Celdas::Clave::Numero : Celdas::Clave::Texto);
    Refresh();
}

// ---------------------------------------------------------------- layout

int Rejilla::altoPies() const { return QFontMetrics(tiraPies_->font()).height() + 6; }

void Rejilla::ajustarCabecera()
{
    // A heading of two lines needs a taller head row.
    int lineas = 1;
    for (const PropColumna& p : props_)
        lineas = std::max(lineas, int(tituloEnLineas(p.titulo).count(QLatin1Char('\n'))) + 1);
    QHeaderView* h = vista_->horizontalHeader();
    h->setMinimumHeight(lineas > 1 ? lineas * h->fontMetrics().height() + 8 : 0);
}

void Rejilla::resizeEvent(QResizeEvent* evento)
{
    QWidget::resizeEvent(evento);
    distribuir();
}

void Rejilla::distribuir()
{
    const int alto = conPies_ ? altoPies() : 0;
    const int altoBarra = conBarra_ ? barra_->sizeHint().height() : 0;
    const QRect vistaGeo(0, 0, width(), std::max(0, height() - alto - altoBarra));
    if (vista_->geometry() != vistaGeo)
        vista_->setGeometry(vistaGeo);
    // Footers and bar span the cells' area, under the record selectors' right.
    const QWidget* vp = vista_->viewport();
    const int x = vista_->x() + vp->x();
    const int ancho = vp->width();
    tiraPies_->setGeometry(x, vistaGeo.bottom() + 1, ancho, alto);
    tiraPies_->setVisible(conPies_);
    barra_->setGeometry(x, vistaGeo.bottom() + 1 + alto, ancho, altoBarra);
    barra_->setVisible(conBarra_);
    colocarPies();
}

void Rejilla::colocarPies()
{
    if (!conPies_)
        return;
    const QHeaderView* h = vista_->horizontalHeader();
    const int alto = tiraPies_->height();
    for (size_t c = 0; c < pies_.size(); ++c) {
        QLabel* l = pies_[c];
        const int col = int(c);
        if (col >= h->count() || h->isSectionHidden(col)) {
            l->hide();
            continue;
        }
        l->setGeometry(h->sectionViewportPosition(col), 0, h->sectionSize(col), alto);
        l->show();
    }
}

// A screen reader reads a footer as its column's heading and its figure
// ("Recibido: 1.195"); an empty footer says only whose it is.
void Rejilla::anunciarPie(int col)
{
    const PropColumna& p = props_[size_t(col)];
    const QString titulo = tituloEnLineas(p.titulo).simplified();
    const QString cifra = p.pie.trimmed();
    QString nombre = titulo;
    if (!cifra.isEmpty())
        nombre = titulo.isEmpty() ? cifra : titulo + QStringLiteral(": ") + cifra;
    QLabel* l = pies_[size_t(col)];
    l->setAccessibleName(nombre);
    l->setAccessibleDescription(titulo.isEmpty() ? QStringLiteral("Pie de la columna %1").arg(col + 1)
                                                 : QStringLiteral("Pie de la columna ") + titulo);
}

void Rejilla::aplicarAlineacionPie(int col)
{
    pies_[size_t(col)]->setAlignment(alineacionQt(props_[size_t(col)].alineacion, false));
}

bool Rejilla::eventFilter(QObject* objeto, QEvent* evento)
{
    if ((objeto == vista_->viewport() || objeto == vista_) &&
        (evento->type() == QEvent::Resize || evento->type() == QEvent::Move))
        distribuir();
    // The menu key and Shift+F10 open the cells' menu on any display, also
    // where the system does not turn them into a context menu itself.
    if (objeto == vista_ && evento->type() == QEvent::KeyPress) {
        const auto* tecla = static_cast<const QKeyEvent*>(evento);
        if (tecla->key() == Qt::Key_Menu || (tecla->key() == Qt::Key_F10 && tecla->modifiers() == Qt::ShiftModifier)) {
            mostrarMenu(QPoint(-1, -1));
            return true;
        }
    }
    return QWidget::eventFilter(objeto, evento);
}
