# What every desktop does, held against the services of a real X session.
orvel_service_test(x11_contract_test SOURCES x11_contract_test.cpp)
orvel_service_test(x11_input_contract_test SOURCES x11_input_contract_test.cpp)
orvel_service_test(x11_opening_contract_test SOURCES x11_opening_contract_test.cpp)
orvel_test(x11_shell_contract_test
    SOURCES x11_shell_contract_test.cpp qt_shell_main.cpp
    LIBS orvel_session_test platform_x11_shell platform_x11 Qt6::Widgets
    LABELS session WHOLE OWN_MAIN)
