// The catalogue screens on the demo database: what they list, what their add
// mode stores, which rows their saving walk sends, and which of them reload
// the cache.
#include "bancos.h"
#include "bancos_zelle.h"
#include "clientes.h"
#include "conceptos.h"
#include "escribir.h"
#include "form_servicios.h"
#include "mensajes.h"
#include "proveedores.h"
#include "prueba.h"
#include "sesion.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

namespace {

// Every update of the table is noted by the database itself, so a test sees
// how many calls reached which rows, with what.
void anotarCambios(const BaseTemporal& base, const QString& tabla, const QString& codigo, const QString& texto)
{
    base.sql(QStringLiteral("CREATE TABLE IF NOT EXISTS llamadas (codigo INTEGER, texto TEXT);"
                            "CREATE TRIGGER anota_%1 AFTER UPDATE ON %1 BEGIN"
                            " INSERT INTO llamadas VALUES (new.%2, new.%3); END;")
                 .arg(tabla, codigo, texto));
}

QStringList llamadas(const BaseTemporal& base)
{
    return base.valor(QStringLiteral("select coalesce(group_concat(codigo || ':' || texto, '|'), '') from llamadas"))
        .split(QLatin1Char('|'), Qt::SkipEmptyParts);
}

} // namespace

class PruebaCatalogos : public QObject {
    Q_OBJECT
private slots:
    void bancos_se_agregan_sin_tocar_la_cache()
    {
        SesionDePrueba s;
        s.principal->entrada(QStringLiteral("TAB_BANCOS"))->trigger();
        auto* p = qobject_cast<BANCOS*>(s.principal->Abierta(QStringLiteral("BANCOS")));
        QVERIFY(p);
        QCOMPARE(p->Celdas.UpperBound(1) + 1, s.base.valor(QStringLiteral("select count(*) from bancos")).toInt());
        QCOMPARE(p->Celdas.Value(0, 0).texto(), QStringLiteral("0102"));
        QVERIFY(!p->GRID->AllowUpdate());
        QVERIFY(p->Text1[1]->isHidden() && p->Text1[0]->isHidden() && p->Procesar->isHidden());

        // The add mode: labels keep their captions, fields start empty.
        p->Text1[3]->setText(QStringLiteral("resto"));
        p->INCLUIR->click();
        QVERIFY(!p->Text1[0]->isHidden() && !p->Procesar->isHidden());
        QCOMPARE(p->Text1[0]->text(), QStringLiteral("Código"));
        QCOMPARE(p->Text1[3]->text(), QString());
        p->Text1[1]->setText(QStringLiteral("0199"));
        p->Text1[3]->setText(QStringLiteral("BANCO NUEVO "));
        const int bancos = s.m->N_Bancos;
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_banco from bancos where C_Banco = 199")), QStringLiteral("BANCO NUEVO "));
        QVERIFY(p->Text1[1]->isHidden() && p->Procesar->isHidden());
        QCOMPARE(p->Celdas.Value(p->Celdas.UpperBound(1), 0).texto(), QStringLiteral("0199"));
        QCOMPARE(s.m->N_Bancos, bancos); // the cache waits for the next full load

        // Nothing typed: the server gives the next code; a known code is renamed.
        p->INCLUIR->click();
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select C_Banco || '/' || D_banco from bancos order by C_Banco desc limit 1")),
                 QStringLiteral("200/"));
        p->INCLUIR->click();
        p->Text1[1]->setText(QStringLiteral("200"));
        p->Text1[3]->setText(QStringLiteral("BANCO CORREGIDO"));
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_banco from bancos where C_Banco = 200")), QStringLiteral("BANCO CORREGIDO"));
    }

    void zelle_envia_solo_las_filas_marcadas()
    {
        SesionDePrueba s;
        anotarCambios(s.base, QStringLiteral("bancos_zelle"), QStringLiteral("C_Banco"), QStringLiteral("D_banco"));
        auto* p = s.abrir<BANCOS_ZELLE>(QStringLiteral("BANCOS_ZELLE"));
        QCOMPARE(p->Celdas.Value(2, 0).texto() + '|' + p->Celdas.Value(2, 2).texto(), QStringLiteral("2|0"));
        QVERIFY(!(p->GRID->modelo()->flags(p->GRID->modelo()->index(0, 0)) & Qt::ItemIsEditable));

        // Nothing marked: no call, and the cache is read again all the same.
        s.m->Bancos_Zelle_T(3) = QStringLiteral("OLVIDADO");
        p->MODIFICAR->click();
        QCOMPARE(llamadas(s.base), QStringList());
        QCOMPARE(s.m->Bancos_Zelle_T(3), QStringLiteral("WELLS FARGO"));

        escribirEnCelda(*p->GRID, 2, 1, QStringLiteral("CHASE"));          // the same text typed over
        escribirEnCelda(*p->GRID, 5, 1, QStringLiteral("  TD BANK NA  ")); // trimmed on its way
        escribirEnCelda(*p->GRID, 5, 1, QStringLiteral("TD BANK N.A. "));  // two edits, one call
        p->MODIFICAR->click();
        QCOMPARE(llamadas(s.base), (QStringList{"2:CHASE", "5:TD BANK N.A."}));
        QCOMPARE(s.m->Bancos_Zelle_T(5), QStringLiteral("TD BANK N.A."));
        QCOMPARE(p->Celdas.Value(5, 2).texto(), QStringLiteral("0"));

        // Coming back to the screen drops a mark that was not saved.
        escribirEnCelda(*p->GRID, 7, 1, QStringLiteral("PERDIDO"));
        p->Form_Activate();
        p->MODIFICAR->click();
        QCOMPARE(llamadas(s.base).size(), 2);
        QCOMPARE(p->Celdas.Value(7, 1).texto(), QStringLiteral("PNC BANK"));
    }

    void conceptos_abiertos_y_a_la_cache()
    {
        SesionDePrueba s;
        s.principal->entrada(QStringLiteral("CONCEPTO"))->trigger();
        auto* p = qobject_cast<CONCEPTOS*>(s.principal->Abierta(QStringLiteral("CONCEPTOS")));
        QVERIFY(p);
        QCOMPARE(p->Celdas.Value(9, 0).texto(), QStringLiteral("010"));
        QVERIFY(p->Text1[3]->isVisible());

        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique la Descripcipón del Concepto"));
        QCOMPARE(s.mensajes.last().estilo, int(Mensajes::vbInformation));
        QCOMPARE(p->focusWidget(), p->Text1[3]);
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from conceptos")), QStringLiteral("10"));

        p->Text1[3]->setText(QStringLiteral("   "));
        p->Procesar->click();
        p->Text1[3]->setText(QStringLiteral("DONACION"));
        p->Procesar->click();
        QCOMPARE(s.m->Nombre_Concepto(11), QStringLiteral("   "));
        QCOMPARE(s.m->Nombre_Concepto(12), QStringLiteral("DONACION"));
        QCOMPARE(p->Text1[3]->text(), QString());

        escribirEnCelda(*p->GRID, 11, 1, QStringLiteral(" DONATIVO "));
        p->MODIFICAR->click();
        QCOMPARE(s.m->Nombre_Concepto(12), QStringLiteral("DONATIVO"));
    }

    void proveedores_montos_con_coma_y_totales()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("update proveedor set regalo = 1000.25, ultregalo = 0; update proveedor set ultregalo = 2.5 where C_proveedor = 2"));
        s.principal->entrada(QStringLiteral("TAB_PROVEEDORES"))->trigger();
        auto* p = qobject_cast<Proveedores*>(s.principal->Abierta(QStringLiteral("Proveedores")));
        QVERIFY(p);
        QCOMPARE(p->windowTitle(), QStringLiteral("Proveedores (grupos)"));
        const auto celda = [p](int f, int k) { return p->Celdas.Value(f, k).texto(); };
        QCOMPARE(QStringList({celda(0, 0), celda(0, 6), celda(0, 7), celda(1, 7)}),
                 QStringList({"01", "1.000,2500", "", "2,5000"}));
        QCOMPARE(p->GRID->Columns(6).FooterText() + '|' + p->GRID->Columns(7).FooterText(), QStringLiteral("12.003,00|2,50"));

        escribirEnCelda(*p->GRID, 0, 6, QStringLiteral("1.234,5678"));
        escribirEnCelda(*p->GRID, 0, 5, QStringLiteral("1.5"));
        escribirEnCelda(*p->GRID, 2, 7, QStringLiteral("99")); // marks the row; the value goes nowhere
        const QList<Valor> enviados = p->Valores_Modificar(0);
        QCOMPARE(enviados.size(), 6);
        QCOMPARE(enviados[4].aTexto() + '|' + enviados[5].aTexto(), QStringLiteral("1,5|1,234,5678"));
        escribirEnCelda(*p->GRID, 0, 1, QStringLiteral("ORINOCO C.A."));
        p->MODIFICAR->click();
        QCOMPARE(s.base.valor(QStringLiteral("select regalo || '/' || Comision || '/' || porgan || '/' || D_proveedor from proveedor where C_proveedor = 1")),
                 QStringLiteral("1234.5678/1.5/40.0/ORINOCO C.A."));
        QCOMPARE(s.base.valor(QStringLiteral("select ultregalo from proveedor where C_proveedor = 3")), QStringLiteral("0.0"));
        QCOMPARE(s.m->Nombre_Proveedor(1), QStringLiteral("INVERSIONES ORINOCO")); // no reload of the cache

        p->INCLUIR->click();
        QVERIFY(p->Text1[0]->isHidden() && p->Text1[1]->isHidden() && !p->Text1[5]->isHidden());
        p->Text1[3]->setText(QStringLiteral("NUEVO PROVEEDOR DE LOS ANDES Y DEL LLANO"));
        p->Text1[4]->setText(QStringLiteral("NPA"));
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_proveedor || '/' || clave_pro from proveedor where C_proveedor = 13")),
                 QStringLiteral("NUEVO PROVEEDOR DE LOS ANDES Y/NPA"));
        QCOMPARE(p->Celdas.Value(12, 0).texto(), QStringLiteral("13"));
    }

    void servicios_comprobaciones_y_letra()
    {
        SesionDePrueba s;
        s.principal->entrada(QStringLiteral("TAB_SERVICIOS"))->trigger();
        auto* p = qobject_cast<Form_SERVICIOS*>(s.principal->Abierta(QStringLiteral("Form_SERVICIOS")));
        QVERIFY(p);
        const QString antes = s.base.valor(QStringLiteral("select count(*) from servicios"));

        // The five checks in their order, each with its field.
        QList<QWidget*> focos;
        auto procesar = [&] {
            p->Procesar->click();
            focos << p->focusWidget();
        };
        procesar();
        p->Text1[3]->setText(QStringLiteral("MONEDA NUEVA"));
        procesar();
        p->Text1[1]->setText(QStringLiteral("12.5"));
        p->Text1[5]->setText(QStringLiteral("  "));
        procesar();
        p->Text1[5]->setText(QStringLiteral(" 2 "));
        p->Text1[6]->setFocus();
        procesar();
        QCOMPARE(p->Text1[1]->text(), QStringLiteral("12,5"));
        p->Option1[1]->click();
        p->Option1[2]->click();
        QVERIFY(!p->Option1[1]->isChecked());
        procesar();
        QCOMPARE(s.textos(),
                 (QStringList{"Indique la Descripcipón del Servicio", "Indique Porcentaje de descuento del Servicio",
                              "Indique Numero de decimales del Servicio", "Indique tipo de calculo del Servicio (Sw-calculo)",
                              "Indique Letra del Servicio"}));
        QCOMPARE(focos, (QList<QWidget*>{p->Text1[3], p->Text1[1], p->Text1[5], p->Text1[6], p->Text1[6]}));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from servicios")), antes);

        // A letter already held: warned with the holder's code, and saved all the same.
        s.mensajes.clear();
        p->Text1[6]->setText(QStringLiteral("t"));
        p->Procesar->click();
        QCOMPARE(s.textos(), QStringList{"Error : la letra ya esta asignada al servicio = 1"});
        QCOMPARE(s.mensajes.last().estilo, 0);
        QCOMPARE(s.base.valor(QStringLiteral("select D_SERVIcio || '/' || porcentaje || '/' || decimales || '/' || sw_calculos || '/' || letra"
                                             " from servicios where C_SERVIcio = 59")),
                 QStringLiteral("MONEDA NUEVA/12.5/2/2/T"));
        QCOMPARE(s.m->N_Servicios, int16_t(59));
        QCOMPARE(p->Text1[3]->text(), QString());
        QVERIFY(!p->Option1[2]->isChecked());

        // Now two services hold it: one warning for each.
        s.mensajes.clear();
        p->Text1[3]->setText(QStringLiteral("OTRA"));
        p->Text1[1]->setText(QStringLiteral("1"));
        p->Text1[5]->setText(QStringLiteral("2"));
        p->Option1[1]->click();
        p->Text1[6]->setText(QStringLiteral("T"));
        p->Procesar->click();
        QCOMPARE(s.textos(), (QStringList{"Error : la letra ya esta asignada al servicio = 1",
                                                  "Error : la letra ya esta asignada al servicio = 59"}));

        // Changes in the grid: the letter in capitals, the percentage with a comma.
        const int fila = 1; // ZELLE
        escribirEnCelda(*p->GRID, fila, 6, QStringLiteral("q"));
        escribirEnCelda(*p->GRID, fila, 2, QStringLiteral("7.25"));
        escribirEnCelda(*p->GRID, fila, 7, QStringLiteral(" I "));
        p->MODIFICAR->click();
        QCOMPARE(s.base.valor(QStringLiteral("select letra || '/' || porcentaje || '/' || St_servicio from servicios where C_SERVIcio = 2")),
                 QStringLiteral("Q/7.25/I"));
        QCOMPARE(s.m->Servicios_T(2)[5], QStringLiteral("Q"));
    }
    // Empty tables, as on a new SQL Server database, and a search that finds
    // nobody: the grids have no row, and saving and sorting them is no failure.
    void rejillas_sin_filas()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("DELETE FROM conceptos; DELETE FROM proveedor; DELETE FROM bancos_zelle; "
                                  "DELETE FROM servicios; DELETE FROM servicios_usdt"));
        for (const char* nombre : {"CONCEPTOS", "Proveedores", "BANCOS_ZELLE", "Form_SERVICIOS", "SERVICIOS_USDT"}) {
            auto* c = static_cast<Catalogo*>(s.principal->Mostrar(QString::fromLatin1(nombre)));
            QCOMPARE(c->GRID->vista()->model()->rowCount(), 0);
            auto* guardar = c->MODIFICAR ? c->MODIFICAR : c->findChild<QPushButton*>(QStringLiteral("ACTUALIZAR"));
            QVERIFY2(guardar, nombre);
            guardar->click();
            QVERIFY(c->Celdas.Vacia());
        }
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        p->Text1[5]->setText(QStringLiteral("no hay nadie con este nombre"));
        p->Busca->click();
        QVERIFY(p->Celdas.Vacia());
        emit p->GRID->HeadClick(1);
        p->MODIFICAR->click(); // reloads the full list
        QCOMPARE(p->N_Filas, int16_t(s.base.valor(QStringLiteral("select count(*) from clientes")).toInt()));
        QVERIFY(s.mensajes.isEmpty());
    }
};

REGISTRAR_PRUEBA(PruebaCatalogos);
#include "tst_catalogos.moc"
