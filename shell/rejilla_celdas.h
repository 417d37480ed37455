#pragma once
// The inside of a grid (Rejilla): the bound cell matrix seen as a Qt table
// model, the delegate that edits a cell, and the view. Only rejilla.cpp and
// the grid's tests include it; screens use Rejilla alone.
#include "celdas.h"
#include "fallo.h"
#include "rejilla.h"

#include <QAbstractTableModel>
#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>
#include <QTableView>

#include <algorithm>
#include <set>

namespace rejilla {

inline int aPixeles(int twips) { return twips / 15; }

inline Qt::Alignment alineacionQt(Alineacion a, bool esNumero)
{
    switch (a) {
    case Alineacion::Derecha:
        return Qt::AlignRight | Qt::AlignVCenter;
    case Alineacion::Centro:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    case Alineacion::General:
        return (esNumero ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    case Alineacion::Izquierda:
        break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

inline QString tituloEnLineas(QString t)
{
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return t;
}

} // namespace rejilla

// The bound matrix seen as a table: model row r is matrix row r of the rows
// from 0 on. Row and column counts are taken at each rebind, as the grid's
// own; reads check the matrix bounds, since a screen reshapes the matrix
// during a load before it rebinds.
class ModeloCeldas : public QAbstractTableModel {
public:
    explicit ModeloCeldas(Rejilla* r) : QAbstractTableModel(r), r_(r) {}

    int rowCount(const QModelIndex& padre = {}) const override { return padre.isValid() ? 0 : filas_; }
    int columnCount(const QModelIndex& padre = {}) const override { return padre.isValid() ? 0 : columnas_; }

    int primeraFila() const { return r_->celdas_ ? std::max(r_->celdas_->LowerBound(1), 0) : 0; }

    const Celda* celda(const QModelIndex& i) const
    {
        const Celdas* c = r_->celdas_;
        const int fila = primeraFila() + i.row();
        return c && c->dentro(fila, i.column()) ? &c->Value(fila, i.column()) : nullptr;
    }

    QVariant data(const QModelIndex& i, int rol) const override
    {
        if (!i.isValid())
            return {};
        switch (rol) {
        case Qt::DisplayRole:
        case Qt::EditRole: {
            const Celda* c = celda(i);
            return c ? c->texto() : QString();
        }
        case Qt::TextAlignmentRole: {
            const Celda* c = celda(i);
            const bool numero = c && (c->esNumero() || c->esLogico());
            return QVariant::fromValue(rejilla::alineacionQt(r_->props_[size_t(i.column())].alineacion, numero));
        }
        default:
            return {};
        }
    }

    QVariant headerData(int seccion, Qt::Orientation o, int rol) const override
    {
        if (o == Qt::Vertical) // record selectors, with no number
            return rol == Qt::DisplayRole ? QVariant(QString()) : QVariant();
        if (seccion < 0 || seccion >= columnas_)
            return {};
        const auto& p = r_->props_[size_t(seccion)];
        if (rol == Qt::DisplayRole)
            return rejilla::tituloEnLineas(p.titulo);
        if (rol == Qt::TextAlignmentRole)
            return QVariant::fromValue(rejilla::alineacionQt(p.alineacionCabeza, false));
        return {};
    }

    Qt::ItemFlags flags(const QModelIndex& i) const override
    {
        if (!i.isValid())
            return Qt::NoItemFlags;
        Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        if (r_->editable(i.column()))
            f |= Qt::ItemIsEditable;
        return f;
    }

    // An edit: the text goes into the matrix cell, then the screen hears of it.
    bool setData(const QModelIndex& i, const QVariant& valor, int rol) override
    {
        if (!i.isValid() || rol != Qt::EditRole || !r_->editable(i.column()))
            return false;
        Celdas* c = r_->celdas_;
        const int fila = primeraFila() + i.row();
        if (!c || !c->dentro(fila, i.column()))
            return false;
        c->Value(fila, i.column()) = valor.toString();
        emit dataChanged(i, i);
        r_->despuesDeEditar(i.row(), i.column());
        return true;
    }

    void reiniciar()
    {
        beginResetModel();
        filas_ = r_->celdas_ ? r_->celdas_->filas() : 0;
        columnas_ = int(r_->props_.size());
        endResetModel();
    }

    void agregarColumnas(int hasta)
    {
        beginInsertColumns({}, columnas_, hasta);
        columnas_ = hasta + 1;
        endInsertColumns();
    }

    void filaCambiada(int fila)
    {
        if (fila >= 0 && fila < filas_ && columnas_ > 0)
            emit dataChanged(index(fila, 0), index(fila, columnas_ - 1));
    }

    void todoCambiado()
    {
        if (filas_ > 0 && columnas_ > 0)
            emit dataChanged(index(0, 0), index(filas_ - 1, columnas_ - 1));
    }

    int filas_ = 0;
    int columnas_ = 0;

private:
    Rejilla* r_;
};

// Keeps the open editor at hand for Update, and writes an edit into the
// matrix only when the operator typed in the cell: a cell opened and left
// as it was is no edit, while a text typed over with the same text is one.
class DelegadoCeldas : public QStyledItemDelegate {
public:
    DelegadoCeldas(Rejilla* r, QObject* padre) : QStyledItemDelegate(padre), r_(r) {}

    QWidget* createEditor(QWidget* padre, const QStyleOptionViewItem& o, const QModelIndex& i) const override
    {
        QWidget* e = QStyledItemDelegate::createEditor(padre, o, i);
        const int largo = r_->props_[size_t(i.column())].largo;
        if (auto* linea = qobject_cast<QLineEdit*>(e); linea && largo > 0)
            linea->setMaxLength(largo);
        editor_ = e;
        return e;
    }

    void setModelData(QWidget* e, QAbstractItemModel* m, const QModelIndex& i) const override
    {
        if (auto* linea = qobject_cast<QLineEdit*>(e)) {
            if (!linea->isModified())
                return;
            linea->setModified(false);
        }
        QStyledItemDelegate::setModelData(e, m, i);
    }

    void destroyEditor(QWidget* e, const QModelIndex& i) const override
    {
        if (editor_ == e)
            editor_ = nullptr;
        QStyledItemDelegate::destroyEditor(e, i);
    }

    // The editor open on a cell, if any.
    QWidget* editor() const { return editor_; }

private:
    Rejilla* r_;
    mutable QPointer<QWidget> editor_;
};

// The view of the cells. Qt's delegate commits an edit and then asks the view
// to close its editor, and the screen's after-edit rules run in between, on
// the commit: a rule that moves the cursor (the bank after the provider, the
// reference after the bank), a message that takes the focus or a reload make
// the view close the editor there and then. The close asked for after the
// commit then names an editor the view has already let go: it is done, and
// goes no further.
class VistaCeldas : public QTableView {
public:
    using QTableView::QTableView;

protected:
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint pista) override
    {
        const auto* delegado = dynamic_cast<const DelegadoCeldas*>(itemDelegate());
        if (editor && delegado && editor != delegado->editor())
            return;
        QTableView::closeEditor(editor, pista);
    }
};
