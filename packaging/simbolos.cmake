# Run by CPack once the packages are made (CPACK_POST_BUILD_SCRIPTS): puts the
# debug symbols' package right. CMake 3.25 writes its md5sums with the build
# folder's absolute path, so that dpkg --verify would miss the symbols, and
# gives it no documents; as Debian's own -dbgsym packages, it points to the
# program's.
foreach(paquete IN LISTS CPACK_PACKAGE_FILES)
  if(NOT paquete MATCHES "-dbgsym_[^/]*\\.ddeb$")
    continue()
  endif()
  set(raiz ${paquete}.raiz)
  file(REMOVE_RECURSE ${raiz})
  execute_process(COMMAND dpkg-deb -R ${paquete} ${raiz} COMMAND_ERROR_IS_FATAL ANY)
  file(MAKE_DIRECTORY ${raiz}/usr/share/doc)
  file(CREATE_LINK ${CPACK_PACKAGE_NAME} ${raiz}/usr/share/doc/${CPACK_PACKAGE_NAME}-dbgsym SYMBOLIC)
  file(GLOB_RECURSE archivos LIST_DIRECTORIES false RELATIVE ${raiz} ${raiz}/usr/*)
  set(sumas "")
  foreach(archivo IN LISTS archivos)
    if(NOT IS_SYMLINK ${raiz}/${archivo})
      file(MD5 ${raiz}/${archivo} suma)
      string(APPEND sumas "${suma}  ${archivo}\n")
    endif()
  endforeach()
  file(WRITE ${raiz}/DEBIAN/md5sums "${sumas}")
  execute_process(COMMAND dpkg-deb --root-owner-group -b ${raiz} ${paquete} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${raiz})
endforeach()
