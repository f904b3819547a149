# quillane_is_update_feed(OUT FEED KEY)
#
# Sets OUT to whether FEED is an address that the program would ask, of https and with nobody's name in it, and KEY one
# of 32 bytes in base64.
function(quillane_is_update_feed OUT FEED KEY)
  string(LENGTH "${KEY}" KEY_LENGTH)
  if(FEED MATCHES "^https://[^/@]+(/.*)?$" AND KEY MATCHES "^[A-Za-z0-9+/]+=$" AND KEY_LENGTH EQUAL 44)
    set(${OUT} TRUE PARENT_SCOPE)
  else()
    set(${OUT} FALSE PARENT_SCOPE)
  endif()
endfunction()

# quillane_require_update_feed(FEED KEY)
#
# Ends the configuration where the two are no such address and key.
function(quillane_require_update_feed FEED KEY)
  quillane_is_update_feed(IS_FEED "${FEED}" "${KEY}")
  if(NOT IS_FEED)
    message(FATAL_ERROR "An address that begins with https:// and a key of 32 bytes in base64 belong together: "
      "QUILLANE_UPDATE_FEED is '${FEED}', QUILLANE_UPDATE_KEY is '${KEY}'")
  endif()
endfunction()
