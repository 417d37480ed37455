# The Debian package: the program, its desktop entry, icon, manual page and
# the package's own documents. `cpack -G DEB` in the build folder makes it;
# scripts/paquete.sh makes and checks it.
include(GNUInstallDirs)
set(carpeta_paquete ${CMAKE_CURRENT_LIST_DIR})

set(CPACK_PACKAGE_CONTACT "Control de Pagos <soporte@controldepagos.com.ve>"
    CACHE STRING "Maintainer of the package, as Debian writes it")

install(TARGETS control-pagos RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${carpeta_paquete}/control-pagos.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${carpeta_paquete}/iconos/control-pagos.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
foreach(lado 16 22 24 32 48 64 128 256)
  install(FILES ${carpeta_paquete}/iconos/control-pagos-${lado}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${lado}x${lado}/apps RENAME control-pagos.png)
endforeach()

# Documents as Debian wants them: compressed with no time stamp inside.
set(documentos ${CMAKE_BINARY_DIR}/paquete)
file(MAKE_DIRECTORY ${documentos})
configure_file(${carpeta_paquete}/changelog.in ${documentos}/changelog @ONLY)
configure_file(${carpeta_paquete}/control-pagos.1.in ${documentos}/control-pagos.1 @ONLY)
foreach(doc changelog control-pagos.1)
  execute_process(COMMAND gzip -9nf ${documentos}/${doc})
endforeach()
install(FILES ${documentos}/changelog.gz ${carpeta_paquete}/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/control-pagos)
install(FILES ${documentos}/control-pagos.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# The administrator's script that makes or brings up to date the SQL Server database.
install(FILES ${DESPLIEGUE_SQL} DESTINATION ${CMAKE_INSTALL_DATADIR}/control-pagos)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME control-pagos)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Control de Pagos")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "registro, pago y recibos de las remesas de una casa de cambio")
set(CPACK_PACKAGE_DESCRIPTION
    "Cliente de escritorio de la casa de cambio: los operadores registran cada\n\
remesa que llega por los servicios de billetera o USDT, la completan y pagan\n\
en bolívares desde las consolas, imprimen los recibos en PDF y leen las\n\
estadísticas del día y del mes. Trabaja con la base de datos incorporada\n\
(SQLite, con una copia diaria) o con SQL Server por ODBC (FreeTDS).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries it links come from dpkg-shlibdeps; these it only loads at run
# time: the X platform plugin, Qt's ODBC driver with unixODBC and FreeTDS's
# driver, and Qt's Spanish texts of its standard dialogs.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, libqt6sql6-odbc, unixodbc, tdsodbc, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
include(CPack)

# The README's screenshots (scripts/capturas.sh); not part of the package.
add_executable(capturas ${CMAKE_CURRENT_LIST_DIR}/capturas/capturas.cpp)
target_link_libraries(capturas PRIVATE app_lib Qt6::Test)
target_compile_definitions(capturas PRIVATE ICONO="${CMAKE_CURRENT_LIST_DIR}/iconos/control-pagos-256.png")
