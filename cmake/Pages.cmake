# Man pages, the manual and the completions of shells, made by the tool itself when it has been linked.
set(VENDREL_PAGES ${PROJECT_BINARY_DIR}/share)
add_custom_command(OUTPUT ${VENDREL_PAGES}/man/man1/vendrelmodel.1
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${VENDREL_PAGES}
  COMMAND vendrelmodel manual --into ${VENDREL_PAGES}
  DEPENDS vendrelmodel VERBATIM)
add_custom_target(vendrel_pages ALL DEPENDS ${VENDREL_PAGES}/man/man1/vendrelmodel.1)
install(DIRECTORY ${VENDREL_PAGES}/ DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT tool)
