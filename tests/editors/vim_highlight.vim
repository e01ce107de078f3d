" Writes the highlighted parts of the text as LINE:FIRST:END:GROUP, in bytes from 0. Usage: vim -es -S THIS -c 'call Dump(OUTPUT)'
function! Dump(output) abort
  let l:parts = []
  for l:line in range(1, line('$'))
    let [l:last, l:begin] = ['', 0]
    for l:column in range(1, col([l:line, '$']))
      let l:group = synIDattr(synID(l:line, l:column, 1), 'name')
      if l:group !=# l:last
        if l:last !=# ''
          call add(l:parts, join([l:line, l:begin, l:column - 1, l:last], ':'))
        endif
        let [l:last, l:begin] = [l:group, l:column - 1]
      endif
    endfor
  endfor
  call writefile(l:parts, a:output)
endfunction
