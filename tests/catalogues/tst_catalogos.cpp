// The catalogue screens on the demo database: what they list, what their add
// mode stores, which rows their saving walk sends, and which of them reload
// the cache.
#include "por_menu.h"
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
        using B = BANCOS;
        SesionDePrueba s;
        auto* p = abrirPorMenu<BANCOS>(s, "TAB_BANCOS", "BANCOS");
        QVERIFY(p);
        QLineEdit* codigo = p->Text1[B::txtCodigo];
        QLineEdit* descripcion = p->Text1[B::txtDescripcion];
        QCOMPARE(p->Celdas.UpperBound(1) + 1, s.base.valor(QStringLiteral("select count(*) from bancos")).toInt());
        QCOMPARE(p->Celdas.Value(0, B::colCodigo).texto(), QStringLiteral("0102"));
        QVERIFY(!p->GRID->AllowUpdate());
        QVERIFY(codigo->isHidden() && p->Text1[B::rotCodigo]->isHidden() && p->Procesar->isHidden());

        // The add mode: labels keep their captions, fields start empty.
        descripcion->setText(QStringLiteral("resto"));
        p->INCLUIR->click();
        QVERIFY(!p->Text1[B::rotCodigo]->isHidden() && !p->Procesar->isHidden());
        QCOMPARE(p->Text1[B::rotCodigo]->text(), QStringLiteral("Código"));
        QCOMPARE(descripcion->text(), QString());
        codigo->setText(QStringLiteral("0199"));
        descripcion->setText(QStringLiteral("BANCO NUEVO "));
        const int bancos = s.m->N_Bancos;
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_banco from bancos where C_Banco = 199")), QStringLiteral("BANCO NUEVO "));
        QVERIFY(codigo->isHidden() && p->Procesar->isHidden());
        QCOMPARE(p->Celdas.Value(p->Celdas.UpperBound(1), B::colCodigo).texto(), QStringLiteral("0199"));
        QCOMPARE(s.m->N_Bancos, bancos); // the cache waits for the next full load

        // Nothing typed: the server gives the next code; a known code is renamed.
        p->INCLUIR->click();
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select C_Banco || '/' || D_banco from bancos order by C_Banco desc limit 1")),
                 QStringLiteral("200/"));
        p->INCLUIR->click();
        codigo->setText(QStringLiteral("200"));
        descripcion->setText(QStringLiteral("BANCO CORREGIDO"));
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_banco from bancos where C_Banco = 200")),
                 QStringLiteral("BANCO CORREGIDO"));
    }

    void zelle_envia_solo_las_filas_marcadas()
    {
        SesionDePrueba s;
        anotarCambios(s.base, QStringLiteral("bancos_zelle"), QStringLiteral("C_Banco"), QStringLiteral("D_banco"));
        using Z = BANCOS_ZELLE;
        auto* p = s.abrir<BANCOS_ZELLE>(QStringLiteral("BANCOS_ZELLE"));
        QCOMPARE(p->Celdas.Value(2, Z::colCodigo).texto() + '|' + p->Celdas.Value(2, Z::colMarca).texto(), QStringLiteral("2|0"));
        QVERIFY(!(p->GRID->modelo()->flags(p->GRID->modelo()->index(0, 0)) & Qt::ItemIsEditable));

        // Nothing marked: no call, and the cache is read again all the same.
        s.m->Bancos_Zelle_T(3) = QStringLiteral("OLVIDADO");
        p->MODIFICAR->click();
        QCOMPARE(llamadas(s.base), QStringList());
        QCOMPARE(s.m->Bancos_Zelle_T(3), QStringLiteral("WELLS FARGO"));

        escribirEnCelda(*p->GRID, 2, Z::colDescripcion, QStringLiteral("CHASE"));          // the same text typed over
        escribirEnCelda(*p->GRID, 5, Z::colDescripcion, QStringLiteral("  TD BANK NA  ")); // trimmed on its way
        escribirEnCelda(*p->GRID, 5, Z::colDescripcion, QStringLiteral("TD BANK N.A. "));  // two edits, one call
        p->MODIFICAR->click();
        QCOMPARE(llamadas(s.base), (QStringList {"2:CHASE", "5:TD BANK N.A."}));
        QCOMPARE(s.m->Bancos_Zelle_T(5), QStringLiteral("TD BANK N.A."));
        QCOMPARE(p->Celdas.Value(5, Z::colMarca).texto(), QStringLiteral("0"));

        // Coming back to the screen drops a mark that was not saved.
        escribirEnCelda(*p->GRID, 7, Z::colDescripcion, QStringLiteral("PERDIDO"));
        p->Form_Activate();
        p->MODIFICAR->click();
        QCOMPARE(llamadas(s.base).size(), 2);
        QCOMPARE(p->Celdas.Value(7, Z::colDescripcion).texto(), QStringLiteral("PNC BANK"));
    }

    void conceptos_abiertos_y_a_la_cache()
    {
        SesionDePrueba s;
        auto* p = abrirPorMenu<CONCEPTOS>(s, "CONCEPTO", "CONCEPTOS");
        QVERIFY(p);
        QLineEdit* concepto = p->Text1[CONCEPTOS::txtConcepto];
        QCOMPARE(p->Celdas.Value(9, CONCEPTOS::colCodigo).texto(), QStringLiteral("010"));
        QVERIFY(concepto->isVisible());

        p->Procesar->click();
        QCOMPARE(s.ultimoMensaje(), QStringLiteral("Indique la Descripcipón del Concepto"));
        QCOMPARE(s.mensajes.last().estilo, int(Mensajes::vbInformation));
        QCOMPARE(p->focusWidget(), concepto);
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from conceptos")), QStringLiteral("10"));

        concepto->setText(QStringLiteral("   "));
        p->Procesar->click();
        concepto->setText(QStringLiteral("DONACION"));
        p->Procesar->click();
        QCOMPARE(s.m->Nombre_Concepto(11), QStringLiteral("   "));
        QCOMPARE(s.m->Nombre_Concepto(12), QStringLiteral("DONACION"));
        QCOMPARE(concepto->text(), QString());

        escribirEnCelda(*p->GRID, 11, CONCEPTOS::colDescripcion, QStringLiteral(" DONATIVO "));
        p->MODIFICAR->click();
        QCOMPARE(s.m->Nombre_Concepto(12), QStringLiteral("DONATIVO"));
    }

    void proveedores_montos_con_coma_y_totales()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral(
            "update proveedor set regalo = 1000.25, ultregalo = 0; update proveedor set ultregalo = 2.5 where C_proveedor = 2"));
        using P = Proveedores;
        auto* p = abrirPorMenu<Proveedores>(s, "TAB_PROVEEDORES", "Proveedores");
        QVERIFY(p);
        const auto celda = [p](int f, int k) { return p->Celdas.Value(f, k).texto(); };
        QCOMPARE(
            QStringList({celda(0, P::colCodigo), celda(0, P::colRegalo), celda(0, P::colUltRegalo), celda(1, P::colUltRegalo)}),
            QStringList({"01", "1.000,2500", "", "2,5000"}));
        QCOMPARE(p->GRID->Columns(P::colRegalo).FooterText() + '|' + p->GRID->Columns(P::colUltRegalo).FooterText(),
                 QStringLiteral("12.003,00|2,50"));

        escribirEnCelda(*p->GRID, 0, P::colRegalo, QStringLiteral("1.234,5678"));
        escribirEnCelda(*p->GRID, 0, P::colComision, QStringLiteral("1.5"));
        escribirEnCelda(*p->GRID, 2, P::colUltRegalo, QStringLiteral("99")); // marks the row; the value goes nowhere
        const QList<Valor> enviados = p->Valores_Modificar(0);
        QCOMPARE(enviados.size(), 6);
        QCOMPARE(enviados[4].aTexto() + '|' + enviados[5].aTexto(), QStringLiteral("1,5|1,234,5678"));
        escribirEnCelda(*p->GRID, 0, P::colDescripcion, QStringLiteral("ORINOCO C.A."));
        p->MODIFICAR->click();
        QCOMPARE(
            s.base.valor(QStringLiteral(
                "select regalo || '/' || Comision || '/' || porgan || '/' || D_proveedor from proveedor where C_proveedor = 1")),
            QStringLiteral("1234.5678/1.5/40.0/ORINOCO C.A."));
        QCOMPARE(s.base.valor(QStringLiteral("select ultregalo from proveedor where C_proveedor = 3")), QStringLiteral("0.0"));
        QCOMPARE(s.m->Nombre_Proveedor(1), QStringLiteral("INVERSIONES ORINOCO")); // no reload of the cache

        p->INCLUIR->click();
        QVERIFY(p->Text1[P::rotCodigo]->isHidden() && p->Text1[P::txtCodigo]->isHidden() && !p->Text1[P::rotClave]->isHidden());
        p->Text1[P::txtDescripcion]->setText(QStringLiteral("NUEVO PROVEEDOR DE LOS ANDES Y DEL LLANO"));
        p->Text1[P::txtClave]->setText(QStringLiteral("NPA"));
        p->Procesar->click();
        QCOMPARE(s.base.valor(QStringLiteral("select D_proveedor || '/' || clave_pro from proveedor where C_proveedor = 13")),
                 QStringLiteral("NUEVO PROVEEDOR DE LOS ANDES Y/NPA"));
        QCOMPARE(p->Celdas.Value(12, P::colCodigo).texto(), QStringLiteral("13"));
    }

    void servicios_comprobaciones_y_letra()
    {
        using S = Form_SERVICIOS;
        SesionDePrueba s;
        auto* p = abrirPorMenu<Form_SERVICIOS>(s, "TAB_SERVICIOS", "Form_SERVICIOS");
        QVERIFY(p);
        QLineEdit* servicio = p->Text1[S::txtServicio];
        QLineEdit* porcentaje = p->Text1[S::txtPorcentaje];
        QLineEdit* decimales = p->Text1[S::txtDecimales];
        QLineEdit* letra = p->Text1[S::txtLetra];
        QRadioButton* dolar = p->Option1[S::swDolar];
        QRadioButton* usdt = p->Option1[S::swUsdt];
        const QString antes = s.base.valor(QStringLiteral("select count(*) from servicios"));

        // The five checks in their order, each with its field.
        QList<QWidget*> focos;
        auto procesar = [&] {
            p->Procesar->click();
            focos << p->focusWidget();
        };
        procesar();
        servicio->setText(QStringLiteral("MONEDA NUEVA"));
        procesar();
        porcentaje->setText(QStringLiteral("12.5"));
        decimales->setText(QStringLiteral("  "));
        procesar();
        decimales->setText(QStringLiteral(" 2 "));
        letra->setFocus();
        procesar();
        QCOMPARE(porcentaje->text(), QStringLiteral("12,5"));
        dolar->click();
        usdt->click();
        QVERIFY(!dolar->isChecked());
        procesar();
        QCOMPARE(s.textos(), (QStringList {"Indique la Descripcipón del Servicio", "Indique Porcentaje de descuento del Servicio",
                                           "Indique Numero de decimales del Servicio",
                                           "Indique tipo de calculo del Servicio (Sw-calculo)", "Indique Letra del Servicio"}));
        QCOMPARE(focos, (QList<QWidget*> {servicio, porcentaje, decimales, letra, letra}));
        QCOMPARE(s.base.valor(QStringLiteral("select count(*) from servicios")), antes);

        // A letter already held: warned with the holder's code, and saved all the same.
        s.mensajes.clear();
        letra->setText(QStringLiteral("t"));
        p->Procesar->click();
        QCOMPARE(s.textos(), QStringList {"Error : la letra ya esta asignada al servicio = 1"});
        QCOMPARE(s.mensajes.last().estilo, 0);
        QCOMPARE(s.base.valor(QStringLiteral(
                     "select D_SERVIcio || '/' || porcentaje || '/' || decimales || '/' || sw_calculos || '/' || letra"
                     " from servicios where C_SERVIcio = 59")),
                 QStringLiteral("MONEDA NUEVA/12.5/2/2/T"));
        QCOMPARE(s.m->N_Servicios, int16_t(59));
        QCOMPARE(servicio->text(), QString());
        QVERIFY(!usdt->isChecked());

        // Now two services hold it: one warning for each.
        s.mensajes.clear();
        servicio->setText(QStringLiteral("OTRA"));
        porcentaje->setText(QStringLiteral("1"));
        decimales->setText(QStringLiteral("2"));
        dolar->click();
        letra->setText(QStringLiteral("T"));
        p->Procesar->click();
        QCOMPARE(s.textos(), (QStringList {"Error : la letra ya esta asignada al servicio = 1",
                                           "Error : la letra ya esta asignada al servicio = 59"}));

        // Changes in the grid: the letter in capitals, the percentage with a comma.
        const int fila = 1; // ZELLE
        escribirEnCelda(*p->GRID, fila, S::colLetra, QStringLiteral("q"));
        escribirEnCelda(*p->GRID, fila, S::colPorcentaje, QStringLiteral("7.25"));
        escribirEnCelda(*p->GRID, fila, S::colStatus, QStringLiteral(" I "));
        p->MODIFICAR->click();
        QCOMPARE(s.base.valor(QStringLiteral(
                     "select letra || '/' || porcentaje || '/' || St_servicio from servicios where C_SERVIcio = 2")),
                 QStringLiteral("Q/7.25/I"));
        QCOMPARE(s.m->Servicios_T(2)[5], QStringLiteral("Q"));
    }
    // Empty tables, as on a new SQL Server database, and a search that finds
    // nobody: the grids have no row, and saving and sorting them is no failure.
    void rejillas_sin_filas()
    {
        SesionDePrueba s;
        s.base.sql(QStringLiteral("DELETE FROM conceptos; DELETE FROM proveedor; DELETE FROM bancos_zelle; "
                                  "DELETE FROM servicios"));
        for (const char* nombre : {"CONCEPTOS", "Proveedores", "BANCOS_ZELLE", "Form_SERVICIOS"}) {
            auto* c = static_cast<Catalogo*>(s.principal->Mostrar(QString::fromLatin1(nombre)));
            QCOMPARE(c->GRID->vista()->model()->rowCount(), 0);
            c->MODIFICAR->click();
            QVERIFY(c->Celdas.Vacia());
        }
        auto* p = s.abrir<Clientes>(QStringLiteral("Clientes"));
        p->Text1[Clientes::txtBusqueda]->setText(QStringLiteral("no hay nadie con este nombre"));
        p->Busca->click();
        QVERIFY(p->Celdas.Vacia());
        emit p->GRID->HeadClick(Clientes::colDescripcion);
        p->MODIFICAR->click(); // reloads the full list
        QCOMPARE(p->N_Filas, int16_t(s.base.valor(QStringLiteral("select count(*) from clientes")).toInt()));
        QVERIFY(s.mensajes.isEmpty());
    }
};

REGISTRAR_PRUEBA(PruebaCatalogos);
#include "tst_catalogos.moc"
