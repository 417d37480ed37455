#pragma once
// Typing into a grid cell as the operator does: the cell becomes current, its
// editor opens, the text is typed over and Enter commits it.
#include "rejilla.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QTableView>
#include <QtTest>

// The editor open on a cell; closed editors linger hidden until deleted.
inline QLineEdit* editorAbierto(QTableView* v)
{
    for (QLineEdit* e : v->viewport()->findChildren<QLineEdit*>())
        if (e->isVisible())
            return e;
    return nullptr;
}

inline void escribirEnCelda(Rejilla& g, int fila, int col, const QString& texto)
{
    QTableView* v = g.vista();
    g.setBookmark(fila);
    g.setCol(col);
    v->edit(v->currentIndex());
    QLineEdit* editor = editorAbierto(v);
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, texto);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
}
