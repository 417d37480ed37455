#pragma once
// The screens as a counter drives them in the tests on the production server.
#include "dialogo.h"
#include "escribir.h"
#include "form2.h"
#include "movimientos.h"
#include "sesion.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

// Types a text into a field and presses Enter, as the operator does.
inline void teclear(QLineEdit* campo, const QString& texto)
{
    campo->setFocus();
    campo->selectAll();
    QTest::keyClicks(campo, texto);
    QTest::keyClick(campo, Qt::Key_Return);
}

// The same into several fields of the entry screen, by their place.
inline void teclear(Movimientos* p, std::initializer_list<std::pair<int, const char*>> campos)
{
    for (const auto& [campo, texto] : campos)
        teclear(p->Text2[campo], QString::fromUtf8(texto));
}

// The console by date of transaction, queried over one day.
inline Form2* consola(SesionDePrueba& s, const QDate& fecha)
{
    auto* p = s.abrir<Form2>(QStringLiteral("Form2"));
    p->Fecha1->setDate(fecha);
    p->Fecha2->setDate(fecha);
    p->SELECCIONA->click();
    return p;
}

// The row of a console that holds a sequence; -1 when none does.
inline int filaDe(const Consola* p, int secuencia)
{
    for (int i : p->Celdas.Filas())
        if (p->Celdas.Value(i, 1).texto().toInt() == secuencia)
            return i;
    return -1;
}

// The rows of these sequences paid in one run through the payment dialog:
// provider 3, the reference given, by transfer.
inline void pagar(Form2* p, std::initializer_list<int> secuencias, const QString& referencia)
{
    for (int secuencia : secuencias)
        p->Marcar(filaDe(p, secuencia));
    Dialogo::Reemplazar([&referencia](Dialogo& d) {
        d.Text2[1]->setText(QStringLiteral("3"));
        QTest::keyClick(d.Text2[1], Qt::Key_Return);
        d.Text2[2]->setText(referencia);
        d.Option2[1]->setChecked(true);
        d.Option3[0]->setChecked(true);
        d.OKButton->click();
    });
    p->Sumarizar->click();
    Dialogo::Reemplazar({});
}

// A double click on a console's row: the question to delete it.
inline void dobleClic(Form2* p, int secuencia)
{
    p->GRID->vista()->setCurrentIndex(p->GRID->modelo()->index(filaDe(p, secuencia), 3));
    emit p->GRID->DblClick();
}
