# Copies the package as it was built: -DPACKAGE=FOLDER -DTARGET=FOLDER
file(GLOB files "${PACKAGE}/*.py" "${PACKAGE}/*.pyi" "${PACKAGE}/*.so" "${PACKAGE}/py.typed")
file(COPY ${files} DESTINATION "${TARGET}/vendrelmodel")
