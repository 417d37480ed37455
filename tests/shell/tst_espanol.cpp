// Qt's own dialogs speak Spanish once the program has loaded Qt's translations.
#include "arranque.h"
#include "fallo.h"
#include "prueba.h"
#include "servidor.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

class PruebaEspanol : public QObject {
    Q_OBJECT
private slots:
    void dialogos_de_qt_en_castellano()
    {
        QVERIFY(Carga_Traducciones());
        QMessageBox caja;
        caja.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        QCOMPARE(caja.button(QMessageBox::Yes)->text().remove(QLatin1Char('&')), QStringLiteral("Sí"));
        QCOMPARE(caja.button(QMessageBox::No)->text().remove(QLatin1Char('&')), QStringLiteral("No"));
        QCOMPARE(caja.button(QMessageBox::Cancel)->text().remove(QLatin1Char('&')), QStringLiteral("Cancelar"));

        // The photo's file dialog, as Qt draws it.
        QFileDialog archivo;
        archivo.setOption(QFileDialog::DontUseNativeDialog);
        archivo.setAcceptMode(QFileDialog::AcceptOpen);
        auto* botones = archivo.findChild<QDialogButtonBox*>();
        QVERIFY(botones);
        QCOMPARE(botones->button(QDialogButtonBox::Open)->text().remove(QLatin1Char('&')), QStringLiteral("Abrir"));
    }

    // The program's own words when a connection cannot be opened; a
    // server's refusal would keep the server's.
    void conexion_fallida_en_castellano()
    {
        const auto texto = [](const QString& cadena) {
            try {
                crearServidor(cadena)->abrir();
            } catch (const FalloEjecucion& f) {
                return f.texto();
            }
            return QString();
        };
        QCOMPARE(texto(QStringLiteral("Provider=oracle;Data Source=x")),
                 QStringLiteral("No se puede encontrar el proveedor. Es posible que no esté instalado correctamente. (oracle)"));
    }
};

REGISTRAR_PRUEBA(PruebaEspanol);
#include "tst_espanol.moc"
