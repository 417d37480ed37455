#pragma once
// What every screen shares: the one connection, the one command, the one
// result set, the work variables, the business parameters and the in-memory
// copy of the reference tables, with the small routines that read them.
#include "arreglos.h"
#include "conexion.h"
#include "despliegue.h"
#include "valor.h"

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

class Module1 {
public:
    explicit Module1(Despliegue despliegue = {});

    // ---- session objects
    Despliegue despliegue;
    ::Conexion Conexion;
    ::Comando Comando;
    std::unique_ptr<Recordset> Rs;
    QString SQL;

    // ---- shared work variables: no screen may count on them across a call
    Valor I, J, K, L;
    int32_t Cuenta = 0;

    // ---- parameters of the session
    QString Servidor;
    QString Base_Datos;
    QString Clave;
    QString Fecha_Param;
    QString Fecha_Compraventas;
    float Dolar_Param = 0;
    float Dolar_Actual = 0;
    bool Nivel = false;

    // ---- server clock, written by Hora_Servidor
    QString Ahora_Texto;
    int Hora_S = 0, Minuto_S = 0, Segundo_S = 0, Dia_S = 0, Mes_S = 0, Ano_S = 0;

    // ---- reference cache; rows of the growing tables start at 1
    TablaTexto<3> Bancos_T;
    TablaTexto<4> Clientes_T;
    TablaTexto<5> Proveedores_T;
    TablaTexto<3> Conceptos_T;
    int16_t N_Bancos = 0, N_Clientes = 0, N_Proveedores = 0, N_Conceptos = 0;
    ArregloFijo<std::array<QString, 6>, 100> Servicios_T; // by service code, columns 0 to 5
    int16_t N_Servicios = 0;                              // code of the last service read
    ArregloFijo<float, 100> Monto_T;
    ArregloFijo<double, 100> Compra_T;
    ArregloFijo<double, 100> Div_T;
    ArregloFijo<QString, 10> Bancos_Zelle_T;
    ArregloFijo<float, 100> Precios_T;

    // ---- conversion slots of Convierte_Dolar
    double Monto_Conv = 0;
    double Monto_Usd = 0;

    // ---- the client in hand: the one just created at the counter, or the
    //      client of the receipt being printed
    int16_t Cod_Cliente = 0;
    QString Nom_Cliente;

    // ---- transfer fields between a console, its payment dialog and its
    //      receipt: the selection the dialog shows (Sel_), what the dialog
    //      gives back (Ref_; Ref_Aceptado true only when confirmed), the row
    //      of the receipt or of the deletion (Rec_), and the split of a gain
    //      with the provider (Porc_)
    int32_t Sel_Cuenta = 0;
    double Sel_Total = 0;
    QString Ref_Cod_Proveedor;
    QString Ref_Nombre_Proveedor;
    QString Ref_Referencia;
    QString Ref_Banco;
    QString Ref_Nombre_Banco;
    int16_t Ref_Opcion = 0;
    bool Ref_Aceptado = false;
    QString Rec_Fecha;
    int16_t Rec_Secuencia = 0;
    int16_t Rec_Operadora = 0;
    QString Rec_Concepto;
    int16_t Porc_Gan = 0;
    int16_t Porc_Cliente = 0;

    // ---- routines
    void Cierra_Rs();
    // Runs the procedure in Comando.CommandText with the values set, into Rs.
    void Ejecuta_Comando();
    // The same, with Rs a window on the result read row by row: `alEmpezar`
    // once its columns are known, then `porFila` for each row as Rs's
    // current record; no row is kept. For a long load into a grid.
    void Ejecuta_Comando_Por_Filas(const std::function<void()>& alEmpezar, const std::function<void()>& porFila);
    // The command set up for a procedure call: text, time-out 60, type 4, the connection.
    void Prepara_Comando(const QString& procedimiento);
    // Rs opened on a raw select.
    void Abre_Rs(const QString& sql);
    void Hora_Servidor();
    static QString Fecha_AMD(const QString& fecha);
    static QString Fecha_DMA(const QString& fecha);
    void Carga_Tablas();
    QString Nombre_Banco(const QString& codigo);
    QString Nombre_Cliente(int16_t codigo);
    QString Nombre_Proveedor(int16_t codigo);
    QString Nombre_Concepto(int16_t codigo);
    static QString Nombre_Dia(int16_t dia);
    void Espera(int16_t segundos);
    void Convierte_Dolar(double monto, int16_t servicio);
    // The entry screen's dollar (Dolar_Actual) from the text that the plain
    // dollar screen sends, with its decimal point: read with the business's
    // marks, where the point separates thousands, 365.50 is 36550 and its
    // hundredth part is the dollar.
    static float Dolar_De_Envio(const QString& enviado);
    // At the start of a session: the dollar that the plain dollar screen
    // stored last, as that screen sets it when the price is typed with its two
    // decimals, so the estimates are right before anyone opens that screen.
    // An empty table leaves it at 0.
    void Carga_Dolar_Actual();

    // The clock Espera reads; tests give it a clock of their own.
    std::function<QDateTime()> reloj = [] { return QDateTime::currentDateTime(); };
};
