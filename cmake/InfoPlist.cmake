# quillane_info_plist(FILE FEED KEY)
#
# Writes what the bundle says of itself to the system: version, oldest macOS, why it asks to look into folders. FEED and
# KEY are where newer versions are announced and the key that signs them; with neither nothing of updates stands there.
function(quillane_info_plist FILE FEED KEY)
  set(UPDATES "")
  if(FEED OR KEY)
    quillane_require_update_feed("${FEED}" "${KEY}")
    string(REPLACE "&" "&amp;" FEED "${FEED}")
    string(REPLACE "<" "&lt;" FEED "${FEED}")
    # Whether to check by itself is asked in the settings, not at the second start.
    string(APPEND UPDATES
      "\n\t<key>SUEnableAutomaticChecks</key>\n\t<false/>"
      "\n\t<key>SUFeedURL</key>\n\t<string>${FEED}</string>"
      "\n\t<key>SUPublicEDKey</key>\n\t<string>${KEY}</string>")
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/packaging/mac/Info.plist.in ${FILE} @ONLY)
endfunction()
