orvel_fuzzer(replay_fuzzer SOURCES replay_fuzzer.cpp LIBS orvel_replay CORPUS corpus/replay)
