# Frameworks that Qt's packages look for.
foreach(framework IN ITEMS WrapOpenGL::WrapOpenGL)
    add_library(${framework} INTERFACE IMPORTED GLOBAL)
endforeach()
