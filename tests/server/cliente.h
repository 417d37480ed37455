#pragma once
// A client of the embedded server on a temporary database, through the
// program's own access layer: raw statements, and procedures called as the
// screens call them.
#include "base_temporal.h"
#include "conexion.h"
#include "embebido.h"

struct Cliente {
    explicit Cliente(const QString& cadena)
    {
        conexion.ConnectionString = cadena;
        conexion.Open();
        comando.ActiveConnection = &conexion;
    }
    explicit Cliente(const BaseTemporal& base) : Cliente(base.cadenaConexion()) {}
    Recordset abrir(const QString& sql)
    {
        Recordset rs;
        rs.Open(sql, conexion);
        return rs;
    }
    std::unique_ptr<Recordset> llamar(const char* procedimiento)
    {
        comando.CommandText = QString::fromLatin1(procedimiento);
        comando.CommandTimeout = 60;
        return comando.Execute();
    }
    ServidorEmbebido& servidor() { return dynamic_cast<ServidorEmbebido&>(conexion.servidor()); }
    // A procedure given by its text, run the way the compiled-in ones are.
    Recordset texto(const char* cuerpo, const std::vector<Parametro>& valores = {})
    {
        return Recordset(servidor().procedimientoDeTexto(QStringLiteral("PRUEBA"), cuerpo, valores));
    }
    Conexion conexion;
    Comando comando;
};
