; The first language is used for all languages that are missing here.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "TradChinese"

; The font of the language file was replaced in Windows Vista.
SetFont /LANG=${LANG_TRADCHINESE} "Microsoft JhengHei UI" 9

LangString DesktopLink ${LANG_ENGLISH} "Link on the desktop"
LangString DesktopLink ${LANG_TRADCHINESE} "桌面捷徑"

LangString Finished ${LANG_ENGLISH} "Tellurvane is installed"
LangString Finished ${LANG_TRADCHINESE} "Tellurvane 安裝完成"

LangString ShowGuide ${LANG_ENGLISH} "Show the user guide (in Traditional Chinese)"
LangString ShowGuide ${LANG_TRADCHINESE} "開啟使用說明"

LangString StillRunning ${LANG_ENGLISH} \
  "Tellurvane is running. Please leave it with its button 離開 and then retry."
LangString StillRunning ${LANG_TRADCHINESE} \
  "Tellurvane 正在執行。請先按程式的「離開」結束程式，再按「重試」。"

LangString RemoveState ${LANG_ENGLISH} \
  "Remove your settings (Setting.ini), your task list (JobList.dbs) and its backups as well?\
$\r$\n$\r$\nNo keeps them in $INSTDIR."
LangString RemoveState ${LANG_TRADCHINESE} \
  "是否一併刪除您的設定（Setting.ini）、排程清單（JobList.dbs）與清單的備份？$\r$\n$\r$\n\
按「否」會把這些檔案保留在 $INSTDIR。"

LangString RunValueStays ${LANG_ENGLISH} \
  "The entry that starts Tellurvane with Windows could not be removed, because that needs an \
administrator. It does no harm."
LangString RunValueStays ${LANG_TRADCHINESE} \
  "「Windows 啟動後自動執行」的登錄項目需要系統管理員權限才能移除，因此仍然保留，但不會造成任何影響。"
