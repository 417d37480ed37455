// The entry screen driven as an operator drives it: the service chosen in the
// list with the arrow keys, and a note longer than the transaction keeps.
#include "movimientos.h"
#include "prueba.h"
#include "sesion.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

class PruebaEntradaOperador : public QObject {
    Q_OBJECT
private slots:
    void servicio_con_flechas_y_nota_larga()
    {
        SesionDePrueba s;
        s.m->Dolar_Actual = 36.5f;
        auto* p = s.abrir<Movimientos>(QStringLiteral("Movimientos"));
        const QString secuencia = p->Text2[0]->text();
        const auto teclear = [](QLineEdit* campo, const QString& texto) {
            campo->setFocus();
            campo->selectAll();
            QTest::keyClicks(campo, texto);
            QTest::keyClick(campo, Qt::Key_Return);
        };
        teclear(p->Text2[1], QStringLiteral("1"));
        teclear(p->Text2[2], QStringLiteral("12"));

        // Down three times from TRUMIN: the letter and the service follow the highlight.
        p->List1->setFocus();
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(p->List1, Qt::Key_Down);
        QListWidgetItem* elegido = p->List1->item(3);
        QCOMPARE(p->List1->currentItem(), elegido);
        const int codigo = elegido->data(Qt::UserRole).toInt();
        QVERIFY(codigo != 1);
        QCOMPARE(p->Text2[11]->text(), elegido->text().mid(1, 1));
        QCOMPARE(p->Text2[12]->text(), elegido->text().mid(5, 20));
        QCOMPARE(int(p->Cod_Servicio), codigo);

        teclear(p->Text2[4], QStringLiteral("100"));
        teclear(p->Text2[5], QStringLiteral("95"));
        // A note of 600 characters: the field takes what the column holds.
        QString nota;
        for (int i = 0; nota.size() < 600; ++i)
            nota += QStringLiteral("nota %1; ").arg(i);
        nota.truncate(600);
        p->Text2[10]->setFocus();
        QTest::keyClicks(p->Text2[10], nota);
        QCOMPARE(p->Text2[10]->text(), nota.left(500));
        p->INCLUIR->click();
        QCOMPARE(s.ultimoMensaje(), QString());

        const QString hoy = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
        QCOMPARE(s.base.valor(QStringLiteral("select tipo_servicio || '|' || operadora || '|' || length(obs) || '|' || "
                                             "(obs = '%1') from MOVIMIENTOS where FECHA = '%2' and SECUENCIA = %3")
                                  .arg(nota.left(500), hoy, secuencia)),
                 QStringLiteral("%1|1|500|1").arg(codigo));
    }
};

REGISTRAR_PRUEBA(PruebaEntradaOperador);
#include "tst_operador.moc"
