// The catalogues driven as an operator drives them: grids with no row, paths
// and codes longer than what can be typed, choices made from the keyboard,
// and coming back to a screen.
#include "clientes.h"
#include "conceptos.h"
#include "imagenes.h"
#include "prueba.h"
#include "sesion.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableView>

class PruebaOperador : public QObject {
    Q_OBJECT
private slots:
    void rejillas_sin_filas_se_graban_y_ordenan()
    {
        SesionDePrueba s;
        // Empty tables, as on a new SQL Server database.
        s.base.sql(QStringLiteral("DELETE FROM conceptos; DELETE FROM proveedor; DELETE FROM bancos_zelle; "
                                  "DELETE FROM servicios; DELETE FROM servicios_usdt"));
        for (const char* nombre : {"CONCEPTOS", "Proveedores", "BANCOS_ZELLE", "Form_SERVICIOS", "SERVICIOS_USDT"}) {
            auto* c = static_cast<Catalogo*>(s.principal->Mostrar(QString::fromLatin1(nombre)));
            QVERIFY(c->Celdas.Vacia());
            QCOMPARE(c->GRID->vista()->model()->rowCount(), 0);
            // no row marked: no call, and the grid reloads
            auto* guardar = c->MODIFICAR ? c->MODIFICAR : c->findChild<QPushButton*>(QStringLiteral("ACTUALIZAR"));
            QVERIFY2(guardar, nombre);
            guardar->click();
            QVERIFY(c->Celdas.Vacia());
        }

        // A search that finds nobody leaves an empty grid that sorts and saves.
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        p->Text1[5]->setText(QStringLiteral("no hay nadie con este nombre"));
        p->Busca->click();
        QVERIFY(p->Celdas.Vacia());
        emit p->GRID->HeadClick(1);
        emit p->GRID->HeadClick(4);
        p->MODIFICAR->click();
        QCOMPARE(p->N_Filas, int16_t(s.base.valor(QStringLiteral("select count(*) from clientes")).toInt()));
        QVERIFY(s.mensajes.isEmpty());
    }

    void foto_de_ruta_larga_y_codigo_de_cinco_cifras()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("INSERT INTO clientes (C_CLIENTE, D_cliente) VALUES (10000, 'ZULAY ÑAÑEZ')"));
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        QCOMPARE(p->Text1[6]->text(), s.base.valor(QStringLiteral("select count(*) from clientes")));
        p->GRID->setBookmark(p->N_Filas - 1);
        emit p->GRID->Click();
        QCOMPARE(p->Text1[9]->text(), QStringLiteral("10000"));

        // A picture whose path has 80 characters, as the file dialog gives it.
        QString carpeta = s.base.carpeta() + QStringLiteral("/fotos de clientes");
        const QString nombre = QStringLiteral("/cliente.png");
        carpeta += QLatin1Char('/') + QString(80 - carpeta.size() - nombre.size() - 1, QLatin1Char('x'));
        QVERIFY(QDir().mkpath(carpeta));
        const QString ruta = carpeta + nombre;
        QCOMPARE(ruta.size(), 80);
        const QByteArray png = imagen("PNG", Qt::green);
        {
            QFile f(ruta);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(png);
        }
        p->Dialogo_ShowOpen = [&] { return ruta; };
        p->FOTO->click();
        QCOMPARE(p->Text1[7]->text(), ruta);
        QCOMPARE(imagenDe(p->Imagen), comoSeMuestra(png, p->Imagen));
        p->GRABAR_IMAGEN->click();
        QCOMPARE(s.base.valor(QStringLiteral("select hex(img) from fotos where cliente = 10000")),
                 QString::fromLatin1(png.toHex().toUpper()));

        // The search ignores capitals and accents, the tilde of Ñ included.
        p->Text1[5]->setText(QStringLiteral("zulay nañez"));
        p->Busca->click();
        QCOMPARE(p->Celdas.UpperBound(1), 0);
        QCOMPARE(p->Celdas.Value(0, 1).texto(), QStringLiteral("ZULAY ÑAÑEZ"));
    }

    void filtro_de_servicio_con_el_teclado_y_al_volver()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        const int todos = p->N_Filas;
        p->List1->setFocus();
        QTest::keyClick(p->List1, Qt::Key_Down);
        QTest::keyClick(p->List1, Qt::Key_Down);
        QCOMPARE(p->List1->currentRow(), 2);
        QCOMPARE(p->Servicio_Filtro, int16_t(2));
        p->CONSULTAR->setFocus();
        QTest::keyClick(p->CONSULTAR, Qt::Key_Space);
        const int deZelle =
            s.base.valor(QStringLiteral("select count(distinct C_CLIENTE) from MOVIMIENTOS where tipo_servicio = 2")).toInt();
        QCOMPARE(p->N_Filas, int16_t(deZelle));

        // Away and back: the list shows all the clients, and so do the grid and the count.
        s.abrir<CONCEPTOS>(QStringLiteral("CONCEPTOS"));
        QCOMPARE(s.abrir<Clientes>(QStringLiteral("Clientes")), p);
        QCOMPARE(p->List1->currentItem()->text(), QStringLiteral("00 - TODOS"));
        QCOMPARE(p->Servicio_Filtro, int16_t(0));
        QCOMPARE(p->N_Filas, int16_t(todos));
        QCOMPARE(p->Text1[6]->text(), QString::number(todos));
    }

    void enter_en_un_boton_lo_pulsa()
    {
        SesionDePrueba s;
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        QVERIFY(p->Procesar->isHidden());
        p->INCLUIR->setFocus();
        QTest::keyClick(p->INCLUIR, Qt::Key_Return);
        QVERIFY(!p->Procesar->isHidden());
        p->Text1[3]->setText(QStringLiteral("NOEMÍ PEÑA"));
        p->Procesar->setFocus();
        QTest::keyClick(p->Procesar, Qt::Key_Enter);
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from clientes where D_cliente = 'NOEMÍ PEÑA'")),
                 QStringLiteral("1"));
        QVERIFY(p->Procesar->isHidden());
        // A disabled button stays still.
        p->INCLUIR->setEnabled(false);
        QTest::keyClick(p->INCLUIR, Qt::Key_Return);
        QVERIFY(p->Procesar->isHidden());
    }
};

REGISTRAR_PRUEBA(PruebaOperador);
#include "tst_operador.moc"
