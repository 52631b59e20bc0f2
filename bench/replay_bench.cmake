orvel_bench(replay_bench SOURCES replay_bench.cpp LIBS orvel_replay)
