# encode.cmake: each .wav of the folder FROM as an MP3 in the folder TO, by the program LAME.
# 192 kbit/s throughout, without a frame that tells of the file, which would be the one that the game loses, and without
# a reservoir: no frame borrows room from the one before, so that none needs the lost one.
file(GLOB sounds ${FROM}/*.wav)
foreach(sound ${sounds})
  cmake_path(GET sound STEM LAST_ONLY name)
  execute_process(COMMAND ${LAME} --quiet -t --nores --cbr -b 192 -q 2 ${sound} ${TO}/${name}.mp3
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
