// The grid's context menu: copying the selected cells, exporting the grid's
// sheets (exportar.h), and the actions that a screen adds for its grids
// (charts, reports).
#include "exportar.h"
#include "pantalla.h"
#include "rejilla.h"
#include "rejilla_celdas.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDate>
#include <QHeaderView>
#include <QMenu>

#include <set>

using namespace rejilla;

namespace {

// Narrower than this a column shows nothing readable: it only keeps a key.
constexpr int kAnchoLegible = 60; // twips

// The screen that holds the grid, if any.
const Pantalla* pantallaDe(const QWidget* w)
{
    for (; w; w = w->parentWidget())
        if (const auto* p = qobject_cast<const Pantalla*>(w))
            return p;
    return nullptr;
}

} // namespace

void Rejilla::prepararMenu()
{
    menu_ = new QMenu(this);
    menu_->setObjectName(nombre_ + QStringLiteral("_menu"));
    auto* copiar = new QAction(QStringLiteral("Copiar"), this);
    copiar->setObjectName(QStringLiteral("copiar"));
    copiar->setShortcut(QKeySequence::Copy);
    // Only while the cells have the focus: in a cell under edit, Ctrl+C
    // copies the editor's text as usual.
    copiar->setShortcutContext(Qt::WidgetShortcut);
    connect(copiar, &QAction::triggered, this, [this] { copiarSeleccion(); });
    vista_->addAction(copiar);
    menu_->addAction(copiar);
    // The sheets the screen names, or this grid alone, to a file.
    auto* exportar = new QAction(QStringLiteral("Exportar a hoja de cálculo..."), this);
    exportar->setObjectName(QStringLiteral("exportar"));
    exportar->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    exportar->setShortcutContext(Qt::WidgetShortcut);
    connect(exportar, &QAction::triggered, this, [this] { Exportar::Exportar_Rejilla(*this); });
    vista_->addAction(exportar);
    menu_->addAction(exportar);

    vista_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(vista_, &QWidget::customContextMenuRequested, this, &Rejilla::mostrarMenu);
}

void Rejilla::agregarAccion(QAction* accion)
{
    if (accionesPantalla_.isEmpty())
        menu_->addSeparator();
    accionesPantalla_.append(accion);
    menu_->addAction(accion);
}

QMenu* Rejilla::menuContextual() { return menu_; }

void Rejilla::mostrarMenu(const QPoint& punto)
{
    // The system may also turn the menu key into a context menu: one menu.
    if (menu_->isVisible())
        return;
    // Asked from the keyboard, with the mouse elsewhere, the menu opens on
    // the current cell, or at the top of the cells.
    QPoint donde = punto;
    const QModelIndex actual = vista_->currentIndex();
    const bool conRaton = vista_->viewport()->rect().contains(vista_->viewport()->mapFromGlobal(QCursor::pos()));
    if (!conRaton || !vista_->viewport()->rect().contains(punto))
        donde = actual.isValid() ? vista_->visualRect(actual).center() : QPoint(4, 4);
    menu_->popup(vista_->viewport()->mapToGlobal(donde));
}

std::vector<int> Rejilla::columnasVistas() const
{
    const QHeaderView* h = vista_->horizontalHeader();
    std::vector<int> cols;
    for (int v = 0; v < h->count(); ++v) {
        const int c = h->logicalIndex(v);
        if (!h->isSectionHidden(c) && size_t(c) < props_.size() && props_[size_t(c)].ancho >= kAnchoLegible)
            cols.push_back(c);
    }
    return cols;
}

QString Rejilla::tituloEnUnaLinea(int col) const
{
    const QString titulo = col >= 0 && size_t(col) < props_.size() ? props_[size_t(col)].titulo : QString();
    return tituloEnLineas(titulo).replace(QLatin1Char('\n'), QLatin1Char(' ')).trimmed();
}

QString Rejilla::textoSeleccion() const
{
    const QModelIndexList elegidas = vista_->selectionModel() ? vista_->selectionModel()->selectedIndexes() : QModelIndexList();
    std::set<int> filas, conCelda;
    std::set<std::pair<int, int>> celdas;
    for (const QModelIndex& i : elegidas) {
        filas.insert(i.row());
        conCelda.insert(i.column());
        celdas.insert({i.row(), i.column()});
    }
    if (celdas.empty())
        return {};
    std::vector<int> cols;
    for (int c : columnasVistas())
        if (conCelda.count(c))
            cols.push_back(c);

    QString texto;
    auto linea = [&texto](const QStringList& campos) {
        texto += campos.join(QLatin1Char('\t'));
        texto += QLatin1Char('\n');
    };
    QStringList campos;
    for (int c : cols)
        campos << tituloEnUnaLinea(c);
    linea(campos);
    for (int f : filas) {
        campos.clear();
        for (int c : cols) {
            // A tab or a line break inside a cell would split it in two.
            QString t = celdas.count({f, c}) ? modelo_->index(f, c).data().toString() : QString();
            campos << t.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
        }
        linea(campos);
    }
    return texto;
}

void Rejilla::copiarSeleccion() const
{
    const QString texto = textoSeleccion();
    if (!texto.isEmpty())
        QApplication::clipboard()->setText(texto);
}

void Rejilla::setExportacion(std::function<QString()> nombreArchivo, std::function<std::vector<HojaExportada>()> hojas)
{
    nombreArchivo_ = std::move(nombreArchivo);
    hojas_ = std::move(hojas);
}

QString Rejilla::nombreArchivo() const
{
    if (nombreArchivo_)
        return nombreArchivo_();
    const Pantalla* p = pantallaDe(this);
    const QString pantalla = p ? p->objectName().toLower() : nombre_.toLower();
    return pantalla + QLatin1Char('-') + QDate::currentDate().toString(QStringLiteral("yyyy-MM-dd"));
}

std::vector<HojaExportada> Rejilla::hojas() const
{
    if (hojas_)
        return hojas_();
    const Pantalla* p = pantallaDe(this);
    QString nombre = p ? p->windowTitle() : QString();
    if (nombre.trimmed().isEmpty())
        nombre = p ? p->objectName() : nombre_;
    return {{nombre.trimmed(), this}};
}
