#pragma once
// Typing into a grid cell as the operator does: the cell becomes current, its
// editor opens, the text is typed over and Enter commits it.
#include "rejilla.h"

#include <QApplication>
#include <QKeyEvent>
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

// With `compuesto`, each letter reaches the editor as text alone, the way the
// keyboard composes the accented ones.
inline void escribirEnCelda(Rejilla& g, int fila, int col, const QString& texto, bool compuesto = false)
{
    QTableView* v = g.vista();
    g.setBookmark(fila);
    g.setCol(col);
    v->edit(v->currentIndex());
    QLineEdit* editor = editorAbierto(v);
    QVERIFY(editor);
    editor->selectAll();
    if (!compuesto)
        QTest::keyClicks(editor, texto);
    for (const QChar c : compuesto ? texto : QString()) {
        QKeyEvent tecla(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(editor, &tecla);
    }
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
}

// Types a text into a field and presses Enter.
inline void teclear(QLineEdit* campo, const QString& texto)
{
    campo->setFocus();
    campo->selectAll();
    QTest::keyClicks(campo, texto);
    QTest::keyClick(campo, Qt::Key_Return);
}

// Several cells of one row, by column.
inline void escribirEnFila(Rejilla& g, int fila, std::initializer_list<std::pair<int, const char*>> celdas)
{
    for (const auto& [col, texto] : celdas)
        escribirEnCelda(g, fila, col, QString::fromUtf8(texto));
}
