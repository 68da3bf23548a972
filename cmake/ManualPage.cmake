# A page of the manual for a web browser: TEXT in Markdown becomes PAGE.
execute_process(COMMAND ${CMARK} --extension table ${TEXT} OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "href=\"([a-z-]+)\\.md" "href=\"\\1.html" body "${body}")
string(REGEX MATCH "<h1>([^<]*)" heading "${body}")
file(WRITE ${PAGE} "<!DOCTYPE html>
<html lang=\"en\">
<head>
<meta charset=\"utf-8\">
<title>${CMAKE_MATCH_1}</title>
<style>
body { font-family: Calibri, Carlito, sans-serif; max-width: 50em; margin: 2em auto; padding: 0 1em; line-height: 1.4 }
img { max-width: 100%; border: 1px solid #cdd5db }
table { border-collapse: collapse }
td, th { border: 1px solid #cdd5db; padding: 0.2em 0.6em; text-align: left; vertical-align: top }
</style>
</head>
<body>
${body}</body>
</html>
")
